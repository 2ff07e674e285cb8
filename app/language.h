#pragma once

#include <QString>

namespace curvix::app {

// The language the window shows, as a two-letter code: "en" or "sv". The help window picks
// its pages by it.
QString currentLanguage();

} // namespace curvix::app
