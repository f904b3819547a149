#pragma once
#include <QImage>
#include <QWidget>
#include <memory>

namespace quillane {

// Every shared component in one widget, with the states it can be in. For looking at and for tests that hold
// for all of them.
std::unique_ptr<QWidget> makeGallery();

// The same components as a section uses them: sidebar, table, detail pane.
std::unique_ptr<QWidget> makeSampleWindow();

// `widget` as it is drawn now, at twice the size.
QImage drawn(QWidget& widget);

} // namespace quillane
