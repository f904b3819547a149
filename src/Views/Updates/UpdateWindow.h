#pragma once
#include "UpdatePresenter.h"
#include <QDialog>
#include <functional>
#include <string>

class QPlainTextEdit;
class QVBoxLayout;

namespace quillane {

class Card;
class Label;
class PushButton;
class Spinner;

// What a check for a newer version is at, or has found: one thing at a time. It downloads and installs nothing; all that
// it can do is to open a page in the person's browser, and only by a button that the person goes to: what is shown may
// change while a key is on its way, so focus and Return are never moved to that button.
class UpdateWindow : public QDialog {
    Q_OBJECT
  public:
    enum class Stage { checking, update, upToDate, failure };

    explicit UpdateWindow(QWidget* parent = nullptr);

    void showChecking(std::function<void()> cancel);
    void showUpdate(const AppUpdate& update, const VersionNumber& installed);
    void showUpToDate(const VersionNumber& installed);
    void showFailure(UpdatePresenter::Failure failure);

    Stage stage() const { return m_stage; }
    Label* title() const { return m_title; }
    Label* sentence() const { return m_sentence; }
    QPlainTextEdit* notes() const { return m_notes; }
    // "Open Download Page" or "OK"; hidden while it checks.
    PushButton* mainButton() const { return m_main; }
    // "Not Now" or "Cancel"; hidden when there is nothing to decide.
    PushButton* otherButton() const { return m_other; }

    // Ends a check that runs.
    void reject() override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void makeNotes();
    QVBoxLayout* makeWords();
    QWidget* makeDetails();
    QWidget* makeButtons();
    void enter(Stage stage, const QString& title, const QString& sentence);
    // Focus and Return go to the button that opens nothing.
    void rest();
    void fit();
    void openPage();

    Stage m_stage = Stage::checking;
    std::function<void()> m_cancel; // the check that runs; empty for none
    std::string m_page;             // of the update
    Spinner* m_spinner;
    Label* m_title;
    Label* m_sentence;
    QPlainTextEdit* m_notes;
    Card* m_card; // holds the notes
    Label* m_promise;
    QWidget* m_details = nullptr; // card and promise
    PushButton* m_other;
    PushButton* m_main;
};

} // namespace quillane
