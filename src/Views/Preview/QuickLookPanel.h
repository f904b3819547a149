#pragma once
#include "LibrarySection.h"
#include "Preview/PreviewLoader.h"
#include <QDialog>
#include <QPointer>
#include <functional>
#include <optional>

class QPlainTextEdit;
class QStackedWidget;

namespace quillane {

class AppLibrary;
class Label;
class LibraryObserver;
class PictureView;
class Spinner;
class SymbolButton;
struct ContentState;

// Shows the file that is looked at in a window of its own beside the main window: its picture, the pages of a
// document, its text, or its icon and what is known of it. It is open exactly while ContentState::quickLookURL is set.
// Escape, Space and its close button empty that; the main window's closing and another section do too. Keys that move
// in a list go to the list behind it, whatever opened it, so the selection moves on and the panel follows it.
class QuickLookPanel : public QDialog {
    Q_OBJECT
  public:
    // Belongs to the window and must go before the state does. `list` gives what keys that move in a list are for; it
    // is asked when the panel opens, while the keyboard is where it was.
    QuickLookPanel(AppLibrary& library, ContentState& state, QWidget& window, std::function<QWidget*()> list);

    static constexpr QSize kDefaultSize{760, 600};
    static constexpr QSize kLeastSize{360, 300};
    static constexpr int kIconSide = 128;
    // Until the work is shown to go on. Most files come sooner, and nothing flickers.
    static constexpr std::chrono::milliseconds kMoment{250};

    enum class Content { nothing, loading, picture, text, facts };
    Content content() const;
    PictureView* picture() const { return m_picture; }
    QPlainTextEdit* text() const { return m_text; }
    QString sentence() const;  // below the icon
    QString facts() const;     // in the lowest row
    QString pageWords() const; // empty for a file of one page
    SymbolButton* previousPage() const { return m_previous; }
    SymbolButton* nextPage() const { return m_next; }

    // Empties the state.
    void reject() override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void makeContents();
    QWidget* makeFacts();
    QWidget* makeLowestRow();
    void render();
    void begin(const FileURL& url);
    void dismiss();
    void look(const FileURL& url);
    void load(const FileURL& url, int page);
    Task<> showWorkAfterAMoment(int load, StopToken stop);
    void arrive(const PreviewLoader::Wish& wish, const PreviewLoader::Look& look);
    void showPage(const PreviewPage& page);
    void showIcon(const PreviewLoader::Look& look);
    void showLowestRow();
    void turnPage(int steps);
    bool pass(const QKeyEvent& event);
    bool scroll(int key);

    AppLibrary& m_library;
    ContentState& m_state;
    QStackedWidget* m_contents;
    PictureView* m_picture;
    QPlainTextEdit* m_text;
    PictureView* m_icon = nullptr;
    Label* m_name = nullptr;
    Label* m_sentence = nullptr;
    Label* m_facts = nullptr;
    Label* m_pages = nullptr;
    SymbolButton* m_previous = nullptr;
    SymbolButton* m_next = nullptr;
    LibraryObserver* m_observer = nullptr;

    std::optional<FileURL> m_url; // absent while it is closed
    LibrarySection m_section{};   // in which it was opened
    std::function<QWidget*()> m_findList;
    QPointer<QWidget> m_keyboard; // had it when the panel opened
    QPointer<QWidget> m_list;     // moves in it
    std::optional<UserFile> m_file;
    int m_page = 0;
    int m_pageCount = 1;
    int m_loads = 0;
    bool m_isLoading = false;
    PreviewLoader m_loader;
    TaskScope m_tasks; // last: its suspended frames go first
};

} // namespace quillane
