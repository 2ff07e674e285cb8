#include "app/frmabout1.h"
#include "app/frmgraph.h"
#include "app/help_search.h"
#include "app/help_topics.h"
#include "app/help_window.h"
#include "model/strings.h"
#include "scripted_prompter.h"
#include "widget_lookup.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QTreeWidget>

#include <algorithm>
#include <map>

using namespace curvix;

namespace {

struct PageFacts {
    QStringList anchors;
    QList<QUrl> links; // resolved against the page
    QList<QUrl> images;
    QString title;
    QString text;
};

QUrl pageUrl(const QString& language, const QString& file)
{
    return QUrl(QStringLiteral("qrc:/help/%1/%2").arg(language, file));
}

PageFacts readPage(const QString& language, const QString& file)
{
    PageFacts facts;
    QFile source(QStringLiteral(":/help/%1/%2").arg(language, file));
    if (!source.open(QIODevice::ReadOnly))
        return facts;
    QTextDocument document;
    document.setHtml(QString::fromUtf8(source.readAll()));
    facts.title = document.metaInformation(QTextDocument::DocumentTitle);
    facts.text = document.toPlainText();
    const QUrl base = pageUrl(language, file);
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat format = it.fragment().charFormat();
            facts.anchors << format.anchorNames();
            if (format.isAnchor() && !format.anchorHref().isEmpty())
                facts.links << base.resolved(QUrl(format.anchorHref()));
            if (format.isImageFormat())
                facts.images << base.resolved(QUrl(format.toImageFormat().name()));
        }
    return facts;
}

QStringList manualPages(const QString& language)
{
    return QDir(QStringLiteral(":/help/") + language).entryList({QStringLiteral("*.html")}, QDir::Files);
}

struct HelpWidgets {
    explicit HelpWidgets(QWidget* w) : window(w) {}
    QWidget* window;
    QTabWidget* tabs = child<QTabWidget>(window, QStringLiteral("tabs"));
    QTreeWidget* contents = child<QTreeWidget>(window, QStringLiteral("contents"));
    QLineEdit* search = child<QLineEdit>(window, QStringLiteral("search"));
    QListWidget* results = child<QListWidget>(window, QStringLiteral("results"));
    QTextBrowser* page = child<QTextBrowser>(window, QStringLiteral("page"));
};

} // namespace

class TestAboutHelp : public QObject {
    Q_OBJECT
private slots:
    void sysInfo_data();
    void sysInfo();
    void manualLinksResolve_data();
    void manualLinksResolve();
    void contentsListAndOpenEveryPage_data();
    void contentsListAndOpenEveryPage();
    void search_data();
    void search();
    void closeKeys_data();
    void closeKeys();
    void contextHelp_data();
    void contextHelp();
};

void TestAboutHelp::sysInfo_data()
{
    QTest::addColumn<QStringList>("installed");
    QTest::addColumn<QString>("registered");
    QTest::addColumn<bool>("startWorks");
    QTest::addColumn<QString>("tried"); // empty: nothing is started, the dialog says so

    const auto row = [](const char* name, QStringList installed, const char* tried, bool startWorks = true,
                        const char* registered = "") {
        QTest::newRow(name) << installed << QString::fromLatin1(registered) << startWorks
                            << QString::fromLatin1(tried);
    };
    row("nothing installed", {}, "");
    row("only the last choice", {"gnome-system-monitor"}, "/usr/bin/gnome-system-monitor");
    row("kinfocenter before the others", {"gnome-system-monitor", "hardinfo", "kinfocenter"},
        "/usr/bin/kinfocenter");
    row("found but will not start", {"hardinfo"}, "/usr/bin/hardinfo", false);
    row("a registered tool comes first", {"kinfocenter"}, "C:/Tools/msinfo32.exe", true,
        "C:/Tools/msinfo32.exe");
}

void TestAboutHelp::sysInfo()
{
#ifdef Q_OS_WIN
    QSKIP("Windows looks in the registry, not on the PATH");
#endif
    QFETCH(QStringList, installed);
    QFETCH(QString, registered);
    QFETCH(bool, startWorks);
    QFETCH(QString, tried);

    app::SysInfoSearch search = app::systemSysInfoSearch();
    if (!registered.isEmpty())
        search.registered = [registered] { return registered; };
    search.findExecutable = [installed](const QString& name) {
        return installed.contains(name) ? QStringLiteral("/usr/bin/") + name : QString();
    };
    QStringList attempts;
    search.start = [&attempts, startWorks](const QString& path) {
        attempts << path;
        return startWorks;
    };

    // Through the dialog's button; the dialog stays open either way.
    ScriptedPrompter prompter;
    app::frmAbout1 about(prompter);
    about.setSysInfoSearch(search);
    about.show();
    QTest::mouseClick(child<QPushButton>(&about, QStringLiteral("cmdSysInfo")), Qt::LeftButton);
    QVERIFY(about.isVisible());
    QCOMPARE(attempts, tried.isEmpty() ? QStringList{} : QStringList{tried});
    QCOMPARE(prompter.messages.size(), tried.isEmpty() || !startWorks ? 1 : 0);
}

void TestAboutHelp::manualLinksResolve_data()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("English") << QStringLiteral("en");
    QTest::newRow("Swedish") << QStringLiteral("sv");
}

// Every link of a language's manual leads to a page of the same language and to a section
// that exists; the translation has every page and every section of the English one.
void TestAboutHelp::manualLinksResolve()
{
    QFETCH(QString, language);
    const QStringList pages = manualPages(language);
    QCOMPARE(pages, manualPages(QStringLiteral("en")));
    std::map<QString, PageFacts> facts;
    for (const QString& page : pages)
        facts[page] = readPage(language, page);

    int internal = 0;
    for (const QString& page : pages) {
        QVERIFY2(!facts[page].title.isEmpty(), qPrintable(page + " has no title"));
        QStringList anchors = facts[page].anchors;
        QStringList english = readPage(QStringLiteral("en"), page).anchors;
        anchors.sort();
        english.sort();
        QCOMPARE(anchors, english);
        for (const QUrl& link : facts[page].links) {
            if (link.scheme() == QLatin1String("http") || link.scheme() == QLatin1String("https"))
                continue;
            ++internal;
            const QString target = link.fileName();
            QVERIFY2(link.scheme() == QLatin1String("qrc") &&
                         link.adjusted(QUrl::RemoveFilename | QUrl::RemoveFragment) == pageUrl(language, {}) &&
                         facts.count(target) == 1 &&
                         (!link.hasFragment() || facts[target].anchors.contains(link.fragment())),
                     qPrintable(page + " -> " + link.toString()));
        }
        for (const QUrl& image : facts[page].images)
            QVERIFY2(QFile::exists(QLatin1Char(':') + image.path()), qPrintable(image.toString()));
    }
    QVERIFY(internal > pages.size());
}

void TestAboutHelp::contentsListAndOpenEveryPage_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("shown"); // the folder whose pages are shown
    QTest::addColumn<QString>("startTitle");
    QTest::newRow("English") << QStringLiteral("en") << QStringLiteral("en") << QStringLiteral("Curvix Help");
    QTest::newRow("Swedish") << QStringLiteral("sv") << QStringLiteral("sv") << QStringLiteral("Hjälp för Curvix");
    QTest::newRow("no manual: English") << QStringLiteral("de") << QStringLiteral("en")
                                        << QStringLiteral("Curvix Help");
}

// Every topic and section of the contents opens its page at its place, in the window's
// language; following a link selects the link's topic.
void TestAboutHelp::contentsListAndOpenEveryPage()
{
    QFETCH(QString, language);
    QFETCH(QString, shown);
    QFETCH(QString, startTitle);

    app::HelpWindow window(nullptr, language);
    HelpWidgets w(&window);
    window.show();
    QCOMPARE(w.page->source().fileName(), model::LoadResString(3)); // the start page
    QCOMPARE(w.page->documentTitle(), startTitle);
    QStringList listed;
    for (int i = 0; i < w.contents->topLevelItemCount(); ++i) {
        QTreeWidgetItem* topic = w.contents->topLevelItem(i);
        listed << topic->data(0, Qt::UserRole).toUrl().fileName();
        w.contents->setCurrentItem(topic);
        QCOMPARE(w.page->source().fileName(), listed.last());
        QCOMPARE(w.page->documentTitle(), topic->text(0));
        QCOMPARE(topic->text(0), readPage(shown, listed.last()).title);
        for (int k = 0; k < topic->childCount(); ++k) {
            w.contents->setCurrentItem(topic->child(k));
            const QUrl url = topic->child(k)->data(0, Qt::UserRole).toUrl();
            QCOMPARE(w.page->source(), url);
            QVERIFY2(readPage(shown, url.fileName()).anchors.contains(url.fragment()), qPrintable(url.toString()));
        }
    }
    QCOMPARE(listed.first(), model::LoadResString(3));
    listed.sort();
    QCOMPARE(listed, manualPages(shown));

    window.openPage(QStringLiteral("zoom.html#wheel"));
    QTreeWidgetItem* current = w.contents->currentItem();
    QVERIFY(current && current->parent());
    QCOMPARE(current->data(0, Qt::UserRole).toUrl().fileName(), QStringLiteral("zoom.html"));
    QCOMPARE(current->data(0, Qt::UserRole).toUrl().fragment(), QStringLiteral("wheel"));
    QCOMPARE(w.page->documentTitle(), readPage(shown, QStringLiteral("zoom.html")).title);
}

void TestAboutHelp::search_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("firstPage"); // empty: no topic found

    const auto row = [](const char* name, const char* language, const char* typed, const char* page) {
        QTest::newRow(name) << QString::fromLatin1(language) << QString::fromUtf8(typed) << QString::fromLatin1(page);
    };
    row("upper case", "en", "TANGENT", "tangents.html");
    row("word beginning", "en", "deriv", "derivative.html");
    row("not inside a word", "en", "ngent", "");
    row("two words", "en", "wheel  notch", "zoom.html");
    row("phrase", "en", "flood fill", "colours.html");
    row("quoted phrase", "en", "\"flood fill\"", "colours.html");
    row("phrase before more words", "en", "primitive function", "derivative.html");
    row("phrase before more hits", "en", "fill colour", "classroom.html");
    row("one known, one nonsense", "en", "zoom qxzvolbr", "");
    row("Swedish word", "sv", "derivata", "derivative.html");
    row("typed without accents", "sv", "rutnat", "ranges.html");
    row("accents and capitals", "sv", "RUTNÄT", "ranges.html");
    row("Swedish phrase", "sv", "primitiv funktion", "derivative.html");
}

// The best page comes first; opening it marks only whole words that begin with a searched
// word, and leaving the tab removes the marks.
void TestAboutHelp::search()
{
    QFETCH(QString, language);
    QFETCH(QString, typed);
    QFETCH(QString, firstPage);

    app::HelpWindow window(nullptr, language);
    window.showTab(app::HelpTab::Search);
    window.show();
    HelpWidgets w(&window);
    QVERIFY(w.tabs->currentWidget()->isAncestorOf(w.search));
    QTest::keyClicks(w.search, typed);

    QCOMPARE(w.results->count() > 0, !firstPage.isEmpty());
    if (!firstPage.isEmpty()) {
        QCOMPARE(w.results->item(0)->text(), readPage(language, firstPage).title);
        QTest::keyClick(w.search, Qt::Key_Return);
        QCOMPARE(w.page->source().fileName(), firstPage);
        const QStringList words = app::searchWords(typed);
        const QList<QTextEdit::ExtraSelection> marks = w.page->extraSelections();
        QVERIFY(!marks.isEmpty());
        for (const QTextEdit::ExtraSelection& mark : marks) {
            const QString marked = app::foldForSearch(mark.cursor.selectedText());
            QVERIFY2(std::any_of(words.begin(), words.end(),
                                 [&](const QString& word) { return marked.startsWith(word); }),
                     qPrintable(marked));
        }
    }
    window.showTab(app::HelpTab::Contents);
    QVERIFY(w.page->extraSelections().isEmpty());
}

void TestAboutHelp::closeKeys_data()
{
    QTest::addColumn<QKeySequence>("key");
    QTest::addColumn<QString>("focus");
    QTest::newRow("Esc in the search") << QKeySequence(Qt::Key_Escape) << QStringLiteral("search");
    QTest::newRow("Esc in the page") << QKeySequence(Qt::Key_Escape) << QStringLiteral("page");
    QTest::newRow("Ctrl+W in the contents") << QKeySequence(Qt::CTRL | Qt::Key_W) << QStringLiteral("contents");
    QTest::newRow("Ctrl+W in the search") << QKeySequence(Qt::CTRL | Qt::Key_W) << QStringLiteral("search");
}

// The key closes the window; asked again, the same one comes back on the asked tab.
void TestAboutHelp::closeKeys()
{
    QFETCH(QKeySequence, key);
    QFETCH(QString, focus);

    QWidget mainWindow;
    app::HelpWindow* window = app::showHelp(&mainWindow, app::HelpTab::Search);
    QVERIFY(QTest::qWaitForWindowActive(window));
    QWidget* target = child<QWidget>(window, focus);
    target->setFocus();
    QTest::keySequence(target, key);
    QVERIFY(!window->isVisible());

    QCOMPARE(app::showHelp(&mainWindow, app::HelpTab::Contents), window);
    QVERIFY(window->isVisible());
    QCOMPARE(HelpWidgets(window).tabs->currentWidget(), static_cast<QWidget*>(HelpWidgets(window).contents));
    QCOMPARE(mainWindow.findChildren<app::HelpWindow*>().size(), 1);
}

void TestAboutHelp::contextHelp_data()
{
    QTest::addColumn<QString>("command"); // run first, to open the control's window
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("topic");
    const auto row = [](const char* name, const char* command, const char* control, const char* topic) {
        QTest::newRow(name) << QString::fromLatin1(command) << QString::fromLatin1(control)
                            << QString::fromLatin1(topic);
    };
    row("function box", "", "imgcombfunc", "typing-functions.html");
    row("key of the pad", "", "cmdtoken_16", "keypad.html#keys");
    row("x range box", "", "Text4_0", "ranges.html#boxes");
    row("angle unit", "", "Option1_1", "angles.html#units");
    row("grid", "", "Check2", "ranges.html#grid");
    row("no topic of its own", "", "sideScroll", "getting-started.html#main-window");
    row("About dialog", "", "cmdOK", "curvix-help.html#about");
    row("guide lines window", "mnuvertical", "value", "guide-lines.html");
    row("same window, demonstration", "mnudemo", "xfrom", "demonstration.html");
}

// F1 on a control, in the main window or in a dialog, opens the manual at its topic in a help
// window of that window.
void TestAboutHelp::contextHelp()
{
    QFETCH(QString, command);
    QFETCH(QString, control);
    QFETCH(QString, topic);

    QTemporaryDir home;
    QVERIFY(useHomeOfItsOwn(home));
    ScriptedPrompter prompter;
    app::frmgraph mainWindow(prompter);
    app::frmAbout1 about(prompter, &mainWindow);
    mainWindow.show();
    about.show();
    if (!command.isEmpty()) {
        auto* box = child<QComboBox>(&mainWindow, QStringLiteral("imgcombfunc"));
        QTest::keyClicks(box->lineEdit(), QStringLiteral("x^2"));
        QTest::keyClick(box->lineEdit(), Qt::Key_Return);
        child<QAction>(&mainWindow, command)->trigger();
    }
    QWidget* target = mainWindow.findChild<QWidget*>(control);
    QVERIFY(target);
    if (auto* box = qobject_cast<QComboBox*>(target); box && box->lineEdit())
        target = box->lineEdit(); // where the focus really is

    QCOMPARE(app::helpTopicFor(target), topic);
    QTest::keyClick(target, Qt::Key_F1);
    auto* help = target->window()->findChild<app::HelpWindow*>(QString(), Qt::FindDirectChildrenOnly);
    QVERIFY(help && help->isVisible());
    const QUrl shown = child<QTextBrowser>(help, QStringLiteral("page"))->source();
    QCOMPARE(shown.fileName() + (shown.hasFragment() ? QLatin1Char('#') + shown.fragment() : QString()), topic);
    QVERIFY(!help->isAncestorOf(target)); // F1 inside the manual opens no second one
    QTest::keyClick(child<QWidget>(help, QStringLiteral("search")), Qt::Key_F1);
    QCOMPARE(target->window()->findChildren<app::HelpWindow*>().size(), 1);
}

QTEST_MAIN(TestAboutHelp)
#include "test_about_help.moc"
