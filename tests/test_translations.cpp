#include "app/form_names.h"
#include "app/frmabout1.h"
#include "app/frmgraph.h"
#include "app/frmsettings.h"
#include "app/frmtangent.h"
#include "app/help_window.h"
#include "app/language.h"
#include "app/value_table_dialog.h"
#include "model/app_state.h"
#include "plot/coordinates.h"
#include "scripted_prompter.h"
#include "widget_lookup.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QProcess>
#include <QRegularExpression>
#include <QSettings>
#include <QShortcut>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTranslator>
#include <QXmlStreamReader>

#include <map>
#include <memory>
#include <set>

using namespace curvix;

namespace {

struct TsMessage {
    QString key; // context, source and disambiguation: what lupdate matches a text by
    QString translation;
    QString type;
};

std::vector<TsMessage> readTs(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    std::vector<TsMessage> messages;
    QXmlStreamReader xml(&file);
    QString context;
    TsMessage current;
    QString source;
    QString comment;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isEndElement() && xml.name() == QLatin1String("message")) {
            current.key = context + QLatin1Char('|') + source + QLatin1Char('|') + comment;
            messages.push_back(current);
            current = {};
            source.clear();
            comment.clear();
        }
        if (!xml.isStartElement())
            continue;
        if (xml.name() == QLatin1String("name"))
            context = xml.readElementText();
        else if (xml.name() == QLatin1String("source"))
            source = xml.readElementText();
        else if (xml.name() == QLatin1String("comment"))
            comment = xml.readElementText();
        else if (xml.name() == QLatin1String("translation")) {
            current.type = xml.attributes().value(QLatin1String("type")).toString();
            current.translation = xml.readElementText();
        }
    }
    if (xml.hasError())
        qFatal("%s: %s", qPrintable(path), qPrintable(xml.errorString()));
    return messages;
}

QString tsPath(const QString& language)
{
    return QStringLiteral(CURVIX_TRANSLATIONS_DIR "/curvix_%1.ts").arg(language);
}

std::set<QString> keysOf(const std::vector<TsMessage>& messages)
{
    std::set<QString> keys;
    for (const TsMessage& m : messages)
        keys.insert(m.key);
    return keys;
}

QStringList difference(const std::set<QString>& a, const std::set<QString>& b)
{
    QStringList only;
    for (const QString& key : a)
        if (!b.count(key))
            only << key;
    return only;
}

// The letter after a single "&", lower case; none for "&&" or no "&".
QChar accessKey(const QString& text)
{
    for (qsizetype i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != QLatin1Char('&'))
            continue;
        if (text[i + 1] != QLatin1Char('&'))
            return text[i + 1].toLower();
        ++i;
    }
    return {};
}

// Texts that share an access key within one group, as "d: &Degrees / Ra&dians".
QStringList clashes(const QStringList& texts)
{
    std::map<QChar, QStringList> byKey;
    for (const QString& text : texts)
        if (const QChar key = accessKey(text); !key.isNull())
            byKey[key] << text;
    QStringList found;
    for (const auto& [key, group] : byKey)
        if (group.size() > 1)
            found << QString(key) + QStringLiteral(": ") + group.join(QStringLiteral(" / "));
    return found;
}

QStringList visibleActionTexts(const QWidget* owner)
{
    QStringList texts;
    for (const QAction* action : owner->actions())
        if (action->isVisible() && !action->isSeparator())
            texts << action->text();
    return texts;
}

// The texts of one level of a window: its menu bar's titles and the controls it shows.
QStringList windowTexts(QWidget* window)
{
    QStringList texts;
    if (auto* main = qobject_cast<QMainWindow*>(window))
        texts = visibleActionTexts(main->menuBar());
    for (QWidget* w : window->findChildren<QWidget*>()) {
        if (!w->isVisibleTo(window) || qobject_cast<QMenu*>(w))
            continue;
        if (auto* button = qobject_cast<QAbstractButton*>(w))
            texts << button->text();
        else if (auto* label = qobject_cast<QLabel*>(w); label && label->buddy())
            texts << label->text();
        else if (auto* box = qobject_cast<QGroupBox*>(w))
            texts << box->title();
        else if (auto* tabs = qobject_cast<QTabBar*>(w))
            for (int i = 0; i < tabs->count(); ++i)
                texts << tabs->tabText(i);
    }
    // The window's own Alt+letter keys (Alt+I, Alt+U ...) take the same letters.
    for (const QShortcut* shortcut : window->findChildren<QShortcut*>()) {
        const QKeyCombination keys = shortcut->key()[0];
        if (keys.keyboardModifiers() == Qt::AltModifier && keys.key() >= Qt::Key_A && keys.key() <= Qt::Key_Z)
            texts << QStringLiteral("Alt+&") + QChar(char16_t(u'A' + (keys.key() - Qt::Key_A)));
    }
    return texts;
}

const QStringList kWindows{QStringLiteral("main"),        QStringLiteral("settings"),
                          QStringLiteral("demonstration"), QStringLiteral("guide lines"),
                          QStringLiteral("about"),         QStringLiteral("value table"),
                          QStringLiteral("help")};

std::unique_ptr<QWidget> makeWindow(const QString& name, model::AppState& state,
                                    model::Prompter& prompter)
{
    if (name == QLatin1String("main"))
        return std::make_unique<app::frmgraph>(prompter);
    if (name == QLatin1String("settings"))
        return std::make_unique<app::frmsettings>(state, nullptr);
    if (name == QLatin1String("demonstration") || name == QLatin1String("guide lines")) {
        auto window = std::make_unique<app::frmtangent>(state, prompter, nullptr);
        window->setUsage(name == QLatin1String("demonstration")
                             ? app::frmtangent::Usage::Demonstration
                             : app::frmtangent::Usage::VerticalLines);
        return window;
    }
    if (name == QLatin1String("about"))
        return std::make_unique<app::frmAbout1>(prompter);
    if (name == QLatin1String("value table"))
        return std::make_unique<app::ValueTableDialog>(state, prompter, nullptr);
    return std::make_unique<app::HelpWindow>();
}

const QStringList kLanguages{QStringLiteral("en"), QStringLiteral("sv")};

} // namespace

class TestTranslations : public QObject {
    Q_OBJECT
    QTemporaryDir m_home;

private slots:
    void initTestCase()
    {
        QVERIFY(useHomeOfItsOwn(m_home));
        QSettings(QStringLiteral("Curvix"), QStringLiteral("Curvix")).clear();
    }
    void cleanup() { app::removeTranslations(*qApp); }

    void tsFileFinished_data()
    {
        QTest::addColumn<QString>("language");
        for (const QString& language : kLanguages)
            QTest::newRow(qPrintable(language)) << language;
    }
    void tsFileFinished()
    {
        QFETCH(QString, language);
        QStringList unfinished;
        const std::vector<TsMessage> messages = readTs(tsPath(language));
        for (const TsMessage& m : messages)
            if (!m.type.isEmpty() || m.translation.isEmpty())
                unfinished << m.key + QLatin1Char(' ') +
                                  (m.type.isEmpty() ? QStringLiteral("empty") : m.type);
        QVERIFY2(unfinished.isEmpty(), qPrintable(unfinished.join(QLatin1Char('\n'))));
        QVERIFY(messages.size() > 250);
    }

    // Both files translate the same texts, and these are the texts the sources have now: a
    // text added without `update_translations` shows up here.
    void tsFilesMatchTheSources()
    {
        QTemporaryDir out;
        const QString fresh = out.filePath(QStringLiteral("curvix_en.ts"));
        QProcess lupdate;
        const QStringList arguments{QStringLiteral("-locations"), QStringLiteral("none"),
                                    QStringLiteral("-silent"), QStringLiteral("-I"),
                                    QStringLiteral(CURVIX_SOURCE_DIR),
                                    QStringLiteral("@" CURVIX_TRANSLATED_SOURCES),
                                    QStringLiteral("-ts"), fresh};
        lupdate.start(QStringLiteral(CURVIX_LUPDATE), arguments);
        QVERIFY(lupdate.waitForFinished(60000));
        QCOMPARE(lupdate.exitCode(), 0);
        const std::set<QString> now = keysOf(readTs(fresh));
        for (const QString& language : kLanguages) {
            const std::set<QString> file = keysOf(readTs(tsPath(language)));
            QVERIFY2(file == now, qPrintable(language + QStringLiteral(" lacks: ") +
                                             difference(now, file).join(QStringLiteral("; ")) +
                                             QStringLiteral("\nhas in excess: ") +
                                             difference(file, now).join(QStringLiteral("; ")) +
                                             QStringLiteral("\n(cmake --build build --target "
                                                            "update_translations, then translate)")));
        }
    }

    void noSwedishInEnglish_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::newRow("letters") << QStringLiteral("[åäöÅÄÖ]");
        QTest::newRow("small words")
            << QStringLiteral("\\b(och|att|inte|ingen|endast|eller|omgång)\\b");
        QTest::newRow("mathematics")
            << QStringLiteral("\\b(derivata|primitiv|funktion|tangenter|grader|radianer)\\b");
        QTest::newRow("window")
            << QStringLiteral("\\b(rutnät|koordinatsystem|dubbelklicka|zooma|arkiv|avbryt)\\b");
    }
    void noSwedishInEnglish()
    {
        QFETCH(QString, pattern);
        const QRegularExpression swedish(pattern, QRegularExpression::CaseInsensitiveOption);
        QStringList found;
        for (const TsMessage& m : readTs(tsPath(QStringLiteral("en"))))
            if (swedish.match(m.translation).hasMatch())
                found << m.translation;
        QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
    }

    void languageFromSettingsAndSystem_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("system");
        QTest::addColumn<QString>("expected");
        QTest::newRow("system Swedish") << "system" << "sv_SE" << "sv";
        QTest::newRow("system Swedish of Finland") << "system" << "sv_FI" << "sv";
        QTest::newRow("system English") << "system" << "en_GB" << "en";
        QTest::newRow("system German: English") << "system" << "de_DE" << "en";
        QTest::newRow("nothing stored") << QString() << "sv_SE" << "sv";
        QTest::newRow("unknown stored") << "fi" << "sv_SE" << "sv";
        QTest::newRow("English over Swedish") << "en" << "sv_SE" << "en";
        QTest::newRow("Swedish over English") << "sv" << "en_US" << "sv";
    }
    void languageFromSettingsAndSystem()
    {
        QFETCH(QString, stored);
        QFETCH(QString, system);
        QFETCH(QString, expected);
        QSettings settings(QStringLiteral("Curvix"), QStringLiteral("Curvix"));
        if (stored.isNull())
            settings.remove(QStringLiteral("language"));
        else
            settings.setValue(QStringLiteral("language"), stored);
        settings.sync();
        QCOMPARE(app::languageFor(app::languageChoice(), QLocale(system)), expected);
    }

    void startLanguageIsTheStoredOne_data()
    {
        QTest::addColumn<int>("choice");
        QTest::addColumn<QString>("expected");
        QTest::newRow("English") << int(app::LanguageChoice::English) << "en";
        QTest::newRow("Swedish") << int(app::LanguageChoice::Swedish) << "sv";
        QTest::newRow("system") << int(app::LanguageChoice::System)
                                << app::languageFor(app::LanguageChoice::System, QLocale::system());
    }
    void startLanguageIsTheStoredOne()
    {
        QFETCH(int, choice);
        QFETCH(QString, expected);
        app::setLanguageChoice(app::LanguageChoice(choice));
        app::installTranslations(*qApp);
        QCOMPARE(app::currentLanguage(), expected);
        // A second install replaces the first rather than stacking on it.
        app::installTranslations(*qApp);
        QVERIFY(qApp->findChildren<QTranslator*>().size() <= 2);
        app::removeTranslations(*qApp);
        QCOMPARE(app::currentLanguage(), QStringLiteral("en"));
    }

    // The Language menu stores a new choice and says when it takes effect.
    void languageMenuStoresTheChoice()
    {
        app::setLanguageChoice(app::LanguageChoice::System);
        ScriptedPrompter prompter;
        app::frmgraph window(prompter);
        child<QAction>(&window, QStringLiteral("mnulanguage_sv"))->trigger();
        QCOMPARE(app::languageChoice(), app::LanguageChoice::Swedish);
        QCOMPARE(prompter.messages.size(), 1);
        child<QAction>(&window, QStringLiteral("mnulanguage_sv"))->trigger();
        QCOMPARE(prompter.messages.size(), 1);
        QCOMPARE(app::currentLanguage(), QStringLiteral("en"));
    }

    void windowShowsTheLanguage_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("what");
        QTest::addColumn<QString>("expected");
        QTest::newRow("Swedish menu") << "sv" << "menu" << "&Arkiv";
        QTest::newRow("English menu") << "en" << "menu" << "Fi&le";
        QTest::newRow("Swedish grid") << "sv" << "grid" << "Rutnät";
        QTest::newRow("English grid") << "en" << "grid" << "Grid";
        QTest::newRow("Swedish Yes of Qt") << "sv" << "yes" << "&Ja";
        QTest::newRow("Swedish Cancel of Qt") << "sv" << "cancel" << "Avbryt";
        QTest::newRow("English Yes of Qt") << "en" << "yes" << "&Yes";
    }
    void windowShowsTheLanguage()
    {
        QFETCH(QString, language);
        QFETCH(QString, what);
        QFETCH(QString, expected);
        QVERIFY(app::installLanguage(*qApp, language));
        ScriptedPrompter prompter;
        app::frmgraph window(prompter);
        QMessageBox box(QMessageBox::Question, QString(), QString(),
                        QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        const std::map<QString, QString> shown{
            {QStringLiteral("menu"), child<QMenu>(&window, QStringLiteral("mnufile"))->title()},
            {QStringLiteral("grid"),
             child<QCheckBox>(&window, QLatin1String(app::formName::gridBox))->text()},
            {QStringLiteral("yes"), box.button(QMessageBox::Yes)->text()},
            {QStringLiteral("cancel"), box.button(QMessageBox::Cancel)->text()},
        };
        QCOMPARE(shown.at(what), expected);
    }

    void accessKeysUnique_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("window");
        for (const QString& language : kLanguages)
            for (const QString& name : kWindows)
                QTest::newRow(qPrintable(language + QLatin1Char(' ') + name)) << language << name;
    }
    void accessKeysUnique()
    {
        QFETCH(QString, language);
        QFETCH(QString, window);
        QVERIFY(app::installLanguage(*qApp, language));
        model::AppState state;
        plot::InitPlotDefaults(state);
        ScriptedPrompter prompter;
        const std::unique_ptr<QWidget> shown = makeWindow(window, state, prompter);
        QStringList found = clashes(windowTexts(shown.get()));
        for (const QMenu* menu : shown->findChildren<QMenu*>())
            for (const QString& clash : clashes(visibleActionTexts(menu)))
                found << menu->title() + QStringLiteral(" › ") + clash;
        QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
    }
};

QTEST_MAIN(TestTranslations)
#include "test_translations.moc"
