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
            if (link.scheme() == QLatin1String("http") || link.scheme() == QLatin1String("https"))
                continue;
            ++internal;
            const QString target = link.fileName();
            QVERIFY2(link.scheme() == QLatin1String("qrc") && facts.count(target) == 1 &&
                         (!link.hasFragment() || facts[target].anchors.contains(link.fragment())),
                     qPrintable(page + " -> " + link.toString()));
        }
        for (const QUrl& image : facts[page].images)
            QVERIFY2(QFile::exists(QLatin1Char(':') + image.path()), qPrintable(image.toString()));
    }
    QVERIFY(internal > pages.size());
}

// Every topic and section of the contents opens its page at its place; following a link
// selects the link's topic.
void TestAboutHelp::contentsListAndOpenEveryPage()
{
    app::HelpWindow window;
    HelpWidgets w(&window);
    window.show();
    QCOMPARE(w.page->source().fileName(), model::LoadResString(3)); // the start page
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

    w.page->setSource(pageUrl(QStringLiteral("zoom.html#wheel")));
    QTreeWidgetItem* current = w.contents->currentItem();
    QVERIFY(current && current->parent());
    QCOMPARE(current->data(0, Qt::UserRole).toUrl(), pageUrl(QStringLiteral("zoom.html#wheel")));
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
// The window is the one F1 opens: asked again, the same one turns to the asked tab.
void TestAboutHelp::search()
{
    QFETCH(QString, typed);
    QFETCH(QString, firstTopic);

    QWidget mainWindow;
    app::HelpWindow* window = app::showHelp(&mainWindow, app::HelpTab::Search);
    QVERIFY(window && window->isVisible());
    HelpWidgets w(window);
    QVERIFY(w.tabs->currentWidget()->isAncestorOf(w.search));
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

    if (!found.isEmpty()) {
        QTest::keyClick(w.search, Qt::Key_Return);
        QCOMPARE(w.page->documentTitle(), firstTopic);
        qsizetype places = 0;
        for (const QString& word : words)
            places += w.page->toPlainText().count(word, Qt::CaseInsensitive);
        const QList<QTextEdit::ExtraSelection> marks = w.page->extraSelections();
        QCOMPARE(marks.size(), places);
        for (const QTextEdit::ExtraSelection& mark : marks)
            QVERIFY(words.contains(mark.cursor.selectedText(), Qt::CaseInsensitive));
    }
    QCOMPARE(app::showHelp(&mainWindow, app::HelpTab::Contents), window);
    QCOMPARE(w.tabs->currentWidget(), static_cast<QWidget*>(w.contents));
    QVERIFY(w.page->extraSelections().isEmpty());
    QCOMPARE(mainWindow.findChildren<app::HelpWindow*>().size(), 1);
}

QTEST_MAIN(TestAboutHelp)
#include "test_about_help.moc"
