#pragma once

#include <QString>

namespace curvix::model {

// The program's numbered string table (strings.cpp), through the installed translation: with
// none installed a number gives its source text. An unknown number gives "".
QString LoadResString(int number);

} // namespace curvix::model
