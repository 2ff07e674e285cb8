#include "app/help_window.h"

#include "app/frmabout1.h"
#include "app/help_search.h"
#include "model/strings.h"

#include <QFile>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStyle>
#include <QTabWidget>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace curvix::app {

using model::LoadResString;

namespace {

constexpr int kUrlRole = Qt::UserRole;
constexpr int kContentsTab = 0;
constexpr int kSearchTab = 1;

// A page of a language's folder that the language lacks is read from the English folder.
// The pages of both share the style sheet and pictures one folder up.
QUrl withEnglishFallback(const QUrl& url)
{
    if (url.scheme() != QLatin1String("qrc") || QFile::exists(QLatin1Char(':') + url.path()))
        return url;
    QStringList parts = url.path().split(QLatin1Char('/'));
    // "", "help", language, page
    if (parts.size() != 4 || parts[1] != QLatin1String("help"))
        return url;
    parts[2] = QStringLiteral("en");
    QUrl english = url;
    english.setPath(parts.join(QLatin1Char('/')));
    return english;
}

QString readPage(const QUrl& url)
{
    QFile file(QLatin1Char(':') + withEnglishFallback(url).path());
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll());
}

QUrl withoutFragment(QUrl url)
{
    url.setFragment(QString());
    return url;
}

// The links of a page in reading order, as addresses resolved against the page.
QList<QUrl> linksOf(const QTextDocument& document, const QUrl& base)
{
    QList<QUrl> links;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat format = it.fragment().charFormat();
            if (format.isAnchor() && !format.anchorHref().isEmpty()) {
                const QUrl link = base.resolved(QUrl(format.anchorHref()));
                if (links.isEmpty() || links.back() != link)
                    links << link;
            }
        }
    return links;
}

QString anchorOf(const QTextBlock& block)
{
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QStringList names = it.fragment().charFormat().anchorNames();
        if (!names.isEmpty())
            return names.first();
    }
    return {};
}

// The page's address in the language's folder, whether it is there or not: its links then
// stay in that language, as far as it goes.
QUrl languagePageUrl(const QString& page, const QString& language)
{
    return QUrl(QStringLiteral("qrc:/help/%1/").arg(language) + page);
}

class HelpBrowser : public QTextBrowser {
public:
    using QTextBrowser::QTextBrowser;

    QVariant loadResource(int type, const QUrl& name) override
    {
        return QTextBrowser::loadResource(type, name.isRelative() ? name : withEnglishFallback(name));
    }
};

} // namespace

QString helpStartPage()
{
    const QString name = LoadResString(3);
    return name.isEmpty() ? QStringLiteral("curvix-help.html") : name;
}

HelpWindow::HelpWindow(QWidget* parent, const QString& language)
    : QWidget(parent, Qt::Window), m_language(language)
{
    setObjectName(QStringLiteral("helpWindow"));
    setWindowTitle(LoadResString(3005));
    setWindowIcon(curvixIcon());

    auto button = [this](const char* name, QStyle::StandardPixmap icon, int caption) {
        auto* b = new QToolButton;
        b->setObjectName(QLatin1String(name));
        b->setIcon(style()->standardIcon(icon));
        b->setText(LoadResString(caption));
        b->setToolTip(LoadResString(caption));
        b->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        b->setAutoRaise(true);
        return b;
    };
    m_back = button("back", QStyle::SP_ArrowBack, 3009);
    m_forward = button("forward", QStyle::SP_ArrowForward, 3010);
    m_home = button("home", QStyle::SP_DirHomeIcon, 3011);
    m_back->setEnabled(false);
    m_forward->setEnabled(false);
    auto* navigation = new QHBoxLayout;
    navigation->addWidget(m_back);
    navigation->addWidget(m_forward);
    navigation->addWidget(m_home);
    navigation->addStretch();

    m_contents = new QTreeWidget;
    m_contents->setObjectName(QStringLiteral("contents"));
    m_contents->setHeaderHidden(true);
    m_contents->setColumnCount(1);

    m_search = new QLineEdit;
    m_search->setObjectName(QStringLiteral("search"));
    m_search->setPlaceholderText(LoadResString(3008));
    m_search->setClearButtonEnabled(true);
    m_results = new QListWidget;
    m_results->setObjectName(QStringLiteral("results"));
    m_resultCount = new QLabel;
    m_resultCount->setObjectName(QStringLiteral("resultCount"));
    m_resultCount->setWordWrap(true);
    auto* searchPage = new QWidget;
    auto* searchLayout = new QVBoxLayout(searchPage);
    searchLayout->addWidget(m_search);
    searchLayout->addWidget(m_resultCount);
    searchLayout->addWidget(m_results, 1);

    m_tabs = new QTabWidget;
    m_tabs->setObjectName(QStringLiteral("tabs"));
    m_tabs->insertTab(kContentsTab, m_contents, LoadResString(3006));
    m_tabs->insertTab(kSearchTab, searchPage, LoadResString(3007));

    m_page = new HelpBrowser;
    m_page->setObjectName(QStringLiteral("page"));
    m_page->setOpenExternalLinks(true);

    auto* splitter = new QSplitter(Qt::Horizontal);
    splitter->addWidget(m_tabs);
    splitter->addWidget(m_page);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({300, 700});

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 4, 6, 6);
    layout->addLayout(navigation);
    layout->addWidget(splitter, 1);

    // Every binding the desktop has for Close (Ctrl+W, and Ctrl+F4 where that is usual).
    connect(new QShortcut(QKeySequence::Close, this), &QShortcut::activated, this, &QWidget::close);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);

    loadTopics();
    connectNavigation();
    m_page->setSource(languagePageUrl(helpStartPage(), m_language));
    resize(1020, 700);
}

void HelpWindow::connectNavigation()
{
    connect(m_contents, &QTreeWidget::currentItemChanged, this,
            [this](QTreeWidgetItem* item) { openContentsItem(item); });
    connect(m_contents, &QTreeWidget::itemClicked, this,
            [this](QTreeWidgetItem* item) { openContentsItem(item); });
    connect(m_search, &QLineEdit::textChanged, this, &HelpWindow::search);
    connect(m_search, &QLineEdit::returnPressed, this, [this] {
        if (m_results->count() > 0) {
            m_results->setCurrentRow(0);
            openResult(m_results->item(0));
        }
    });
    connect(m_results, &QListWidget::currentItemChanged, this,
            [this](QListWidgetItem* item) { openResult(item); });
    connect(m_results, &QListWidget::itemClicked, this, &HelpWindow::openResult);
    connect(m_tabs, &QTabWidget::currentChanged, this, &HelpWindow::highlightHits);
    connect(m_page, &QTextBrowser::sourceChanged, this, &HelpWindow::pageChanged);
    connect(m_page, &QTextBrowser::backwardAvailable, m_back, &QWidget::setEnabled);
    connect(m_page, &QTextBrowser::forwardAvailable, m_forward, &QWidget::setEnabled);
    connect(m_back, &QToolButton::clicked, m_page, &QTextBrowser::backward);
    connect(m_forward, &QToolButton::clicked, m_page, &QTextBrowser::forward);
    connect(m_home, &QToolButton::clicked, m_page, &QTextBrowser::home);
}

void HelpWindow::loadTopics()
{
    // The start page lists the topics; each topic's sections become its sub-entries.
    const QUrl start = languagePageUrl(helpStartPage(), m_language);
    QList<QUrl> pages{start};
    QTextDocument startDocument;
    startDocument.setHtml(readPage(start));
    for (const QUrl& link : linksOf(startDocument, start)) {
        const QUrl page = withoutFragment(link);
        if (page.scheme() == QLatin1String("qrc") && !pages.contains(page))
            pages << page;
    }
    for (const QUrl& page : pages) {
        const QString html = readPage(page);
        if (html.isEmpty())
            continue;
        QTextDocument document;
        document.setHtml(html);
        QString title = document.metaInformation(QTextDocument::DocumentTitle);
        if (title.isEmpty())
            title = page.fileName();
        m_topics.push_back({title, page, foldForSearch(document.toPlainText())});
        auto* item = new QTreeWidgetItem(m_contents, {title});
        item->setData(0, kUrlRole, page);
        addSections(item, page, html);
    }
}

void HelpWindow::addSections(QTreeWidgetItem* parent, const QUrl& url, const QString& html)
{
    QTextDocument document;
    document.setHtml(html);
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() != 2)
            continue;
        const QString anchor = anchorOf(block);
        if (anchor.isEmpty())
            continue;
        QUrl section = url;
        section.setFragment(anchor);
        auto* item = new QTreeWidgetItem(parent, {block.text().trimmed()});
        item->setData(0, kUrlRole, section);
    }
}

void HelpWindow::showTab(HelpTab tab)
{
    if (tab == HelpTab::Search) {
        m_tabs->setCurrentIndex(kSearchTab);
        m_search->setFocus();
        m_search->selectAll();
    } else {
        m_tabs->setCurrentIndex(kContentsTab);
        m_contents->setFocus();
    }
}

void HelpWindow::openPage(const QString& page)
{
    m_page->setSource(languagePageUrl(page, m_language));
}

void HelpWindow::search(const QString& text)
{
    m_words = searchWords(text);
    {
        const QSignalBlocker quiet(m_results);
        m_results->clear();
    }
    if (m_words.isEmpty()) {
        m_resultCount->clear();
        highlightHits();
        return;
    }
    // Pages where the words stand together come first, then those that hold each word; within
    // each, the one that mentions them most.
    struct Hit {
        std::size_t topic;
        HelpMatch match;
    };
    std::vector<Hit> hits;
    for (std::size_t i = 0; i < m_topics.size(); ++i) {
        const HelpMatch match = matchText(m_topics[i].text, m_words);
        if (match.kind != HelpMatchKind::None)
            hits.push_back({i, match});
    }
    std::stable_sort(hits.begin(), hits.end(),
                     [](const Hit& a, const Hit& b) { return answersBetter(a.match, b.match); });
    {
        const QSignalBlocker quiet(m_results);
        for (const Hit& hit : hits) {
            auto* item = new QListWidgetItem(m_topics[hit.topic].title, m_results);
            item->setData(kUrlRole, m_topics[hit.topic].url);
        }
    }
    m_resultCount->setText(hits.empty() ? LoadResString(3012)
                                        : LoadResString(3013).arg(hits.size()));
    highlightHits();
}

void HelpWindow::openResult(QListWidgetItem* item)
{
    if (!item)
        return;
    m_page->setSource(item->data(kUrlRole).toUrl());
    highlightHits();
    // Show the first hit rather than the top of the page.
    const QList<QTextEdit::ExtraSelection> marks = m_page->extraSelections();
    if (marks.isEmpty())
        return;
    int first = marks.first().cursor.selectionStart();
    for (const QTextEdit::ExtraSelection& mark : marks)
        first = std::min(first, mark.cursor.selectionStart());
    QTextCursor cursor(m_page->document());
    cursor.setPosition(first);
    m_page->setTextCursor(cursor);
    m_page->ensureCursorVisible();
}

void HelpWindow::openContentsItem(QTreeWidgetItem* item)
{
    if (!item)
        return;
    const QUrl url = item->data(0, kUrlRole).toUrl();
    if (m_page->source() != url)
        m_page->setSource(url);
}

void HelpWindow::pageChanged(const QUrl& url)
{
    // Keep the contents on the page being read, also when it was reached by a link.
    QTreeWidgetItem* match = nullptr;
    for (int i = 0; i < m_contents->topLevelItemCount() && !match; ++i) {
        QTreeWidgetItem* topic = m_contents->topLevelItem(i);
        if (topic->data(0, kUrlRole).toUrl() != withoutFragment(url))
            continue;
        match = topic;
        for (int k = 0; k < topic->childCount(); ++k)
            if (topic->child(k)->data(0, kUrlRole).toUrl() == url)
                match = topic->child(k);
    }
    if (match) {
        const QSignalBlocker quiet(m_contents);
        m_contents->setCurrentItem(match);
        (match->parent() ? match->parent() : match)->setExpanded(true);
    }
    highlightHits();
}

void HelpWindow::highlightHits()
{
    QList<QTextEdit::ExtraSelection> marks;
    if (m_tabs->currentIndex() == kSearchTab) {
        QTextCharFormat format;
        format.setBackground(QColor(255, 225, 60));
        format.setForeground(Qt::black);
        // Folding keeps every character in its place, so the spans are the document's.
        QTextDocument* document = m_page->document();
        for (const TextSpan& span : matchSpans(foldForSearch(document->toPlainText()), m_words)) {
            QTextCursor hit(document);
            hit.setPosition(span.start);
            hit.setPosition(span.start + span.length, QTextCursor::KeepAnchor);
            marks.append({hit, format});
        }
    }
    m_page->setExtraSelections(marks);
}

HelpWindow* showHelp(QWidget* parent, HelpTab tab)
{
    HelpWindow* window =
        parent ? parent->findChild<HelpWindow*>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
    if (window && window->language() != currentLanguage()) {
        delete window;
        window = nullptr;
    }
    if (!window) {
        window = new HelpWindow(parent);
        if (!parent)
            window->setAttribute(Qt::WA_DeleteOnClose);
    }
    window->showTab(tab);
    window->show();
    window->raise();
    window->activateWindow();
    return window;
}

} // namespace curvix::app
