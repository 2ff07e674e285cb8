#include "app/frmabout1.h"
#include "app/help_window.h"
#include "model/strings.h"
#include "scripted_prompter.h"
#include "widget_lookup.h"

#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QToolButton>
#include <QTreeWidget>

#include <algorithm>
#include <map>

using namespace curvix;

namespace {

const QString kUnavailable = QStringLiteral("System Information Is Unavailable At This Time");

struct PageFacts {
    QStringList anchors;
    QList<QUrl> links; // resolved against the page
    QList<QUrl> images;
    QString title;
    QString text;
};

QUrl pageUrl(const QString& file)
{
    return QUrl(QStringLiteral("qrc:/help/") + file);
}

PageFacts readPage(const QString& file)
{
    PageFacts facts;
    QFile source(QStringLiteral(":/help/") + file);
    if (!source.open(QIODevice::ReadOnly))
        return facts;
    QTextDocument document;
    document.setHtml(QString::fromUtf8(source.readAll()));
    facts.title = document.metaInformation(QTextDocument::DocumentTitle);
    facts.text = document.toPlainText();
    const QUrl base = pageUrl(file);
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

QStringList manualPages()
{
    return QDir(QStringLiteral(":/help")).entryList({QStringLiteral("*.html")}, QDir::Files);
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
    void manualLinksResolve();
    void contentsListAndOpenEveryPage();
    void search_data();
    void search();
    void showHelpOpensOneWindowOnTheAskedTab();
};

void TestAboutHelp::sysInfo_data()
{
    QTest::addColumn<QStringList>("installed");
    QTest::addColumn<QString>("registered");
    QTest::addColumn<bool>("startWorks");
    QTest::addColumn<QString>("tried");
    QTest::addColumn<bool>("started");

    const QString none;
    QTest::newRow("nothing installed") << QStringList{} << none << true << none << false;
    QTest::newRow("only the last choice")
        << QStringList{"gnome-system-monitor"} << none << true
        << QStringLiteral("/usr/bin/gnome-system-monitor") << true;
    QTest::newRow("kinfocenter before the others")
        << QStringList{"gnome-system-monitor", "hardinfo", "kinfocenter"} << none << true
        << QStringLiteral("/usr/bin/kinfocenter") << true;
    QTest::newRow("found but will not start")
        << QStringList{"hardinfo"} << none << false << QStringLiteral("/usr/bin/hardinfo") << false;
    QTest::newRow("a registered tool comes first")
        << QStringList{"kinfocenter"} << QStringLiteral("C:/Tools/msinfo32.exe") << true
        << QStringLiteral("C:/Tools/msinfo32.exe") << true;
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
    QFETCH(bool, started);

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
    QCOMPARE(prompter.messages, started ? QStringList{} : QStringList{kUnavailable});
}

void TestAboutHelp::manualLinksResolve()
{
    const QStringList pages = manualPages();
    QVERIFY(pages.contains(model::LoadResString(3)));
    std::map<QString, PageFacts> facts;
    for (const QString& page : pages)
        facts[page] = readPage(page);

    int internal = 0;
    for (const QString& page : pages) {
        QVERIFY2(!facts[page].title.isEmpty(), qPrintable(page + " has no title"));
        for (const QUrl& link : facts[page].links) {
            const QString where = page + " -> " + link.toString();
            if (link.scheme() == QLatin1String("http") || link.scheme() == QLatin1String("https"))
                continue;
            QCOMPARE(link.scheme(), QStringLiteral("qrc"));
            ++internal;
            const QString target = link.fileName();
            QVERIFY2(facts.count(target) == 1, qPrintable(where));
            if (link.hasFragment())
                QVERIFY2(facts[target].anchors.contains(link.fragment()), qPrintable(where));
        }
        for (const QUrl& image : facts[page].images)
            QVERIFY2(QFile::exists(QLatin1Char(':') + image.path()),
                     qPrintable(page + " -> " + image.toString()));
    }
    QVERIFY(internal > pages.size());
}

// Every topic and section of the contents opens its page at its place; following a link
// selects the link's topic, and Back returns.
void TestAboutHelp::contentsListAndOpenEveryPage()
{
    app::HelpWindow window;
    HelpWidgets w(&window);
    window.show();
    QStringList listed;
    for (int i = 0; i < w.contents->topLevelItemCount(); ++i) {
        QTreeWidgetItem* topic = w.contents->topLevelItem(i);
        listed << topic->data(0, Qt::UserRole).toUrl().fileName();
        w.contents->setCurrentItem(topic);
        QCOMPARE(w.page->source().fileName(), listed.last());
        QCOMPARE(w.page->documentTitle(), topic->text(0));
        for (int k = 0; k < topic->childCount(); ++k) {
            w.contents->setCurrentItem(topic->child(k));
            const QUrl url = topic->child(k)->data(0, Qt::UserRole).toUrl();
            QCOMPARE(w.page->source(), url);
            QVERIFY2(readPage(url.fileName()).anchors.contains(url.fragment()), qPrintable(url.toString()));
        }
    }
    QCOMPARE(listed.first(), model::LoadResString(3));
    listed.sort();
    QCOMPARE(listed, manualPages());

    const QUrl start = w.page->source();
    w.page->setSource(pageUrl(QStringLiteral("zoom.html#wheel")));
    QTreeWidgetItem* current = w.contents->currentItem();
    QVERIFY(current && current->parent());
    QCOMPARE(current->data(0, Qt::UserRole).toUrl(), pageUrl(QStringLiteral("zoom.html#wheel")));
    QTest::mouseClick(child<QToolButton>(&window, QStringLiteral("back")), Qt::LeftButton);
    QCOMPARE(w.page->source(), start);
}

void TestAboutHelp::search_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("firstTopic"); // empty: no topic found

    QTest::newRow("upper case") << QStringLiteral("TANGENT") << QStringLiteral("Tangents");
    QTest::newRow("two words") << QStringLiteral("wheel  notch") << QStringLiteral("Zooming");
    QTest::newRow("primitive") << QStringLiteral("primitive") << QStringLiteral("Derivative and primitive function");
    QTest::newRow("one known, one nonsense") << QStringLiteral("zoom qxzvolbr") << QString();
}

// Exactly the pages that hold every word, whatever their case, the one that mentions them
// most first; opening it marks every place of the words, and leaving the tab removes the marks.
void TestAboutHelp::search()
{
    QFETCH(QString, typed);
    QFETCH(QString, firstTopic);

    app::HelpWindow window;
    HelpWidgets w(&window);
    window.show();
    window.showTab(app::HelpTab::Search);
    QTest::keyClicks(w.search, typed);

    const QStringList words = typed.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QStringList expected;
    for (const QString& page : manualPages()) {
        const PageFacts facts = readPage(page);
        if (std::all_of(words.begin(), words.end(),
                        [&](const QString& word) { return facts.text.contains(word, Qt::CaseInsensitive); }))
            expected << facts.title;
    }
    QStringList found;
    for (int i = 0; i < w.results->count(); ++i)
        found << w.results->item(i)->text();
    QCOMPARE(found.value(0), firstTopic);
    found.sort();
    expected.sort();
    QCOMPARE(found, expected);
    if (found.isEmpty())
        return;

    QTest::keyClick(w.search, Qt::Key_Return);
    QCOMPARE(w.page->documentTitle(), firstTopic);
    qsizetype places = 0;
    for (const QString& word : words)
        places += w.page->toPlainText().count(word, Qt::CaseInsensitive);
    const QList<QTextEdit::ExtraSelection> marks = w.page->extraSelections();
    QCOMPARE(marks.size(), places);
    for (const QTextEdit::ExtraSelection& mark : marks)
        QVERIFY(words.contains(mark.cursor.selectedText(), Qt::CaseInsensitive));
    w.tabs->setCurrentIndex(w.tabs->indexOf(w.contents));
    QVERIFY(w.page->extraSelections().isEmpty());
}

void TestAboutHelp::showHelpOpensOneWindowOnTheAskedTab()
{
    QWidget mainWindow;
    app::HelpWindow* first = app::showHelp(&mainWindow, app::HelpTab::Search);
    QVERIFY(first && first->isVisible());
    HelpWidgets w(first);
    QVERIFY(w.tabs->currentWidget()->isAncestorOf(w.search));
    QCOMPARE(w.page->source().fileName(), model::LoadResString(3));

    QCOMPARE(app::showHelp(&mainWindow, app::HelpTab::Contents), first);
    QCOMPARE(w.tabs->currentWidget(), static_cast<QWidget*>(w.contents));
    QCOMPARE(mainWindow.findChildren<app::HelpWindow*>().size(), 1);
}

QTEST_MAIN(TestAboutHelp)
#include "test_about_help.moc"
