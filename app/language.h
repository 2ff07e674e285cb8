#pragma once

#include <QString>

class QCoreApplication;
class QLocale;
class QMenu;

namespace curvix::model {
class Prompter;
}

namespace curvix::app {

// Settings › Language: the system's language, or one of ours whatever the system says.
enum class LanguageChoice { System, English, Swedish };

// The choice stored under the settings key "language"; System when none is stored.
LanguageChoice languageChoice();
void setLanguageChoice(LanguageChoice choice);

// The two-letter code ("en" or "sv") a choice stands for. System takes the first of the
// locale's interface languages that Curvix has, and English when it has none of them.
QString languageFor(LanguageChoice choice, const QLocale& system);

// Loads Curvix's translation and Qt's own (for the standard buttons and the file dialog) for
// a language code and installs them in place of any installed before. False, and nothing
// changes, when Curvix has no translation for the code.
bool installLanguage(QCoreApplication& app, const QString& code);

// Called once the application object exists: the stored choice's language.
void installTranslations(QCoreApplication& app);

// Takes out what installLanguage put in: the window shows the source texts again.
void removeTranslations(QCoreApplication& app);

// The language the window shows, as a two-letter code: "en" or "sv". The help window picks
// its pages by it. Without an installed translation it is "en", the source texts' language.
QString currentLanguage();

// Adds Settings › Language to the menu. A new choice is stored and takes effect at the next
// start, which the prompter says.
QMenu* addLanguageMenu(QMenu* settingsMenu, model::Prompter& prompter);

} // namespace curvix::app
