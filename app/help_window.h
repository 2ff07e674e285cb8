#pragma once

#include "app/language.h"

#include <QStringList>
#include <QUrl>
#include <QWidget>

#include <vector>

class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QTabWidget;
class QTextBrowser;
class QToolButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace curvix::app {

enum class HelpTab { Contents, Search };

// The manual's window: the contents and the search on two tabs, the page beside them.
// The manual is HTML in the program's resources, a folder per language; its start page
// (named by string 3) lists the topics in the order of the contents. Esc and Ctrl+W close it.
class HelpWindow : public QWidget {
    Q_OBJECT
public:
    // language: "en" or "sv"; a page missing in it is shown in English.
    explicit HelpWindow(QWidget* parent = nullptr, const QString& language = currentLanguage());

    QString language() const { return m_language; }

    void showTab(HelpTab tab);
    // Shows a page of the manual: its file name, optionally with "#section".
    void openPage(const QString& page);

private:
    void connectNavigation();
    struct Topic {
        QString title;
        QUrl url;
        QString text; // the page as plain text, folded for the search
    };

    void loadTopics();
    void addSections(QTreeWidgetItem* parent, const QUrl& url, const QString& html);
    void search(const QString& text);
    void openResult(QListWidgetItem* item);
    void openContentsItem(QTreeWidgetItem* item);
    void pageChanged(const QUrl& url);
    void highlightHits();

    QString m_language;
    std::vector<Topic> m_topics;
    QStringList m_words; // the words of the last search, folded
    QTabWidget* m_tabs = nullptr;
    QTreeWidget* m_contents = nullptr;
    QLineEdit* m_search = nullptr;
    QListWidget* m_results = nullptr;
    QLabel* m_resultCount = nullptr;
    QTextBrowser* m_page = nullptr;
    QToolButton* m_back = nullptr;
    QToolButton* m_forward = nullptr;
    QToolButton* m_home = nullptr;
};

// Opens the help window on the given tab, or raises the one already open for this parent;
// one left in another language than the window's is replaced.
// The window belongs to the parent and closes with it; with no parent each call opens a
// new window that deletes itself when closed.
HelpWindow* showHelp(QWidget* parent, HelpTab tab);

// The file name of the manual's start page.
QString helpStartPage();

} // namespace curvix::app
