#include "app/language.h"

#include "model/prompter.h"
#include "model/strings.h"

#include <QActionGroup>
#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QMenu>
#include <QSettings>
#include <QTranslator>

#include <array>

namespace curvix::app {

namespace {

// Qt 6 asks for the texts of its standard buttons (a message box's Yes, No, Cancel) in these
// contexts, which Debian's Swedish Qt translation, made for an older Qt, does not have. Listed
// here, lupdate puts them in our .ts files, and our translator answers Qt's question.
[[maybe_unused]] constexpr const char* kQtButtonTexts[] = {
    QT_TRANSLATE_NOOP("QPlatformTheme", "OK"), QT_TRANSLATE_NOOP("QPlatformTheme", "Save"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "Save All"), QT_TRANSLATE_NOOP("QPlatformTheme", "Open"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "&Yes"), QT_TRANSLATE_NOOP("QPlatformTheme", "Yes to &All"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "&No"), QT_TRANSLATE_NOOP("QPlatformTheme", "N&o to All"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "Abort"), QT_TRANSLATE_NOOP("QPlatformTheme", "Retry"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "Ignore"), QT_TRANSLATE_NOOP("QPlatformTheme", "Close"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "Cancel"), QT_TRANSLATE_NOOP("QPlatformTheme", "Discard"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "Help"), QT_TRANSLATE_NOOP("QPlatformTheme", "Apply"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "Reset"),
    QT_TRANSLATE_NOOP("QPlatformTheme", "Restore Defaults"),
    QT_TRANSLATE_NOOP("QGnomeTheme", "&OK"), QT_TRANSLATE_NOOP("QGnomeTheme", "&Save"),
    QT_TRANSLATE_NOOP("QGnomeTheme", "&Cancel"), QT_TRANSLATE_NOOP("QGnomeTheme", "&Close"),
    QT_TRANSLATE_NOOP("QGnomeTheme", "Close without Saving"),
};

const QString kLanguageKey = QStringLiteral("language");
// The translators live as children of the application, found again by these names, so that
// a second install replaces the first instead of stacking on it.
const QString kOursName = QStringLiteral("curvixTranslator");
const QString kQtName = QStringLiteral("qtTranslator");

struct ChoiceName {
    LanguageChoice choice;
    const char* stored;
};
constexpr std::array<ChoiceName, 3> kChoices{{{LanguageChoice::System, "system"},
                                              {LanguageChoice::English, "en"},
                                              {LanguageChoice::Swedish, "sv"}}};

QSettings settings()
{
    return QSettings(QStringLiteral("Curvix"), QStringLiteral("Curvix"));
}

void removeTranslator(QCoreApplication& app, const QString& name)
{
    if (auto* old = app.findChild<QTranslator*>(name, Qt::FindDirectChildrenOnly)) {
        QCoreApplication::removeTranslator(old);
        delete old;
    }
}

// Qt's translations come as qtbase_XX.qm, or in older packages as one qt_XX.qm.
QTranslator* loadQtTranslation(QCoreApplication& app, const QString& code)
{
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    auto* translator = new QTranslator(&app);
    if (translator->load(QStringLiteral("qtbase_") + code, folder) ||
        translator->load(QStringLiteral("qt_") + code, folder))
        return translator;
    delete translator;
    return nullptr;
}

} // namespace

LanguageChoice languageChoice()
{
    const QString stored = settings().value(kLanguageKey).toString();
    for (const ChoiceName& c : kChoices)
        if (stored == QLatin1String(c.stored))
            return c.choice;
    return LanguageChoice::System;
}

void setLanguageChoice(LanguageChoice choice)
{
    for (const ChoiceName& c : kChoices)
        if (c.choice == choice)
            settings().setValue(kLanguageKey, QLatin1String(c.stored));
}

QString languageFor(LanguageChoice choice, const QLocale& system)
{
    switch (choice) {
    case LanguageChoice::English:
        return QStringLiteral("en");
    case LanguageChoice::Swedish:
        return QStringLiteral("sv");
    case LanguageChoice::System:
        break;
    }
    for (const QString& name : system.uiLanguages()) {
        const QLocale::Language language = QLocale(name).language();
        if (language == QLocale::Swedish)
            return QStringLiteral("sv");
        if (language == QLocale::English)
            return QStringLiteral("en");
    }
    return QStringLiteral("en");
}

bool installLanguage(QCoreApplication& app, const QString& code)
{
    auto* ours = new QTranslator(&app);
    if (!ours->load(QStringLiteral(":/i18n/curvix_") + code)) {
        delete ours;
        return false;
    }
    removeTranslations(app);
    // Qt's first: the one installed last is asked first, and ours must win where both know a text.
    if (QTranslator* qt = loadQtTranslation(app, code)) {
        qt->setObjectName(kQtName);
        QCoreApplication::installTranslator(qt);
    }
    ours->setObjectName(kOursName);
    QCoreApplication::installTranslator(ours);
    return true;
}

void installTranslations(QCoreApplication& app)
{
    installLanguage(app, languageFor(languageChoice(), QLocale::system()));
}

void removeTranslations(QCoreApplication& app)
{
    removeTranslator(app, kOursName);
    removeTranslator(app, kQtName);
}

QString currentLanguage()
{
    const QCoreApplication* app = QCoreApplication::instance();
    const auto* ours =
        app ? app->findChild<QTranslator*>(kOursName, Qt::FindDirectChildrenOnly) : nullptr;
    return ours ? ours->language().left(2) : QStringLiteral("en");
}

QMenu* addLanguageMenu(QMenu* settingsMenu, model::Prompter& prompter)
{
    QMenu* menu = settingsMenu->addMenu(model::LoadResString(2092));
    menu->setObjectName(QStringLiteral("mnulanguage"));
    auto* group = new QActionGroup(menu);
    // The languages are named in themselves, so that a reader of either finds their own.
    const std::array<QString, 3> texts{model::LoadResString(2093), QStringLiteral("&English"),
                                       QStringLiteral("S&venska")};
    const LanguageChoice stored = languageChoice();
    for (std::size_t i = 0; i < kChoices.size(); ++i) {
        QAction* action = menu->addAction(texts[i]);
        action->setObjectName(QStringLiteral("mnulanguage_") + QLatin1String(kChoices[i].stored));
        action->setCheckable(true);
        action->setChecked(kChoices[i].choice == stored);
        group->addAction(action);
        const LanguageChoice choice = kChoices[i].choice;
        QObject::connect(action, &QAction::triggered, menu, [choice, &prompter] {
            if (choice == languageChoice())
                return;
            setLanguageChoice(choice);
            prompter.message(model::LoadResString(2094));
        });
    }
    return menu;
}

} // namespace curvix::app
