#pragma once

#include <QString>

namespace curvix::model {

// The program's numbered string table (resources/strings.tsv). An unknown number gives "".
QString LoadResString(int number);

} // namespace curvix::model
