#pragma once

#include "eval/compiled_formula.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace curvix::plot {

// The x values of a table: from, from + step, ... up to to (a step of the wrong sign counts
// backwards from from). Each is rounded to 15 significant digits, so that 0.1 steps give 0.3
// and not 0.30000000000000004, and the value printed beside it is the one --eval gives there.
struct TableRange {
    double from = 0;
    double to = 0;
    double step = 1;
};

// No table may have more rows than this: a typo in the step must not hang the window.
inline constexpr int kMaxTableRows = 10000;

// Reads the three texts as the range boxes do (decimal point or comma, "2p" for 2π); on
// failure nothing, and problem says why.
std::optional<TableRange> readTableRange(const QString& from, const QString& to,
                                         const QString& step, QString* problem = nullptr);

// The rows' x values; empty for a range of more than kMaxTableRows rows or a zero step.
std::vector<double> tableXs(const TableRange& range);

struct TableColumn {
    QString heading;
    const eval::CompiledFormula* formula = nullptr;
};

struct ValueTable {
    std::vector<double> xs;
    QStringList headings;              // one per function
    std::vector<std::vector<double>> values; // values[row][function]
};

ValueTable makeValueTable(const TableRange& range, const std::vector<TableColumn>& columns);

// One cell as --eval prints the value (shortest text that reads back exactly, "." as decimal
// point), or "—" where the function is not defined.
QString tableCellText(double value);

enum class TableFormat {
    // Tab between cells, newline after each row, undefined as "—": pastes into a spreadsheet.
    TabSeparated,
    // RFC 4180: comma between cells (the decimal point is always "."), CRLF line ends, texts
    // with a comma, quote or line break in quotes; undefined is an empty cell, so that the
    // column stays numeric in a spreadsheet.
    Csv,
};

// The heading row "x" and the functions' headings, then one row per x.
QString tableText(const ValueTable& table, TableFormat format);

} // namespace curvix::plot
