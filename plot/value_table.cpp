#include "plot/value_table.h"

#include "eval/numtext.h"
#include "plot/coordinates.h"

#include <QCoreApplication>

#include <cmath>

namespace curvix::plot {

std::optional<TableRange> readTableRange(const QString& from, const QString& to,
                                         const QString& step, QString* problem)
{
    const std::optional<double> a = readRangeNumber(from.trimmed());
    const std::optional<double> b = readRangeNumber(to.trimmed());
    const std::optional<double> h = readRangeNumber(step.trimmed());
    auto fail = [&](const QString& why) {
        if (problem)
            *problem = why;
        return std::nullopt;
    };
    if (!a || !b || !h)
        return fail(QCoreApplication::translate("ValueTable", "'%1' is not a number")
                        .arg(!a ? from : !b ? to : step));
    if (!(*h != 0))
        return fail(QCoreApplication::translate("ValueTable", "the step must not be 0"));
    const TableRange range{*a, *b, *h};
    if (tableXs(range).empty())
        return fail(QCoreApplication::translate("ValueTable", "more than %1 rows").arg(kMaxTableRows));
    return range;
}

std::vector<double> tableXs(const TableRange& range)
{
    const double step = range.to >= range.from ? std::abs(range.step) : -std::abs(range.step);
    const double count = std::floor((range.to - range.from) / step * (1 + 1e-12) + 1e-9);
    if (!std::isfinite(count) || step == 0 || count + 1 > kMaxTableRows)
        return {};
    std::vector<double> xs;
    for (int i = 0; i <= int(count); ++i) {
        const double x = range.from + i * step;
        xs.push_back(eval::numberText(x, QLocale::c(), 15).toDouble());
    }
    return xs;
}

ValueTable makeValueTable(const TableRange& range, const std::vector<TableColumn>& columns)
{
    ValueTable table;
    table.xs = tableXs(range);
    for (const TableColumn& column : columns)
        table.headings << column.heading;
    for (const double x : table.xs) {
        std::vector<double>& row = table.values.emplace_back();
        for (const TableColumn& column : columns)
            row.push_back(column.formula ? column.formula->evaluate(x) : std::nan(""));
    }
    return table;
}

QString tableCellText(double value)
{
    return std::isfinite(value) ? eval::roundTripText(value) : QStringLiteral("—");
}

namespace {

QString csvField(const QString& text)
{
    if (!text.contains(u',') && !text.contains(u'"') && !text.contains(u'\n') &&
        !text.contains(u'\r'))
        return text;
    return u'"' + QString(text).replace(u'"', QStringLiteral("\"\"")) + u'"';
}

} // namespace

QString tableText(const ValueTable& table, TableFormat format)
{
    const bool csv = format == TableFormat::Csv;
    const QString separator = csv ? QStringLiteral(",") : QStringLiteral("\t");
    const QString lineEnd = csv ? QStringLiteral("\r\n") : QStringLiteral("\n");
    const auto cell = [&](const QString& text) { return csv ? csvField(text) : text; };

    QStringList heading{cell(QStringLiteral("x"))};
    for (const QString& h : table.headings)
        heading << cell(h);
    QString text = heading.join(separator) + lineEnd;
    for (std::size_t r = 0; r < table.xs.size(); ++r) {
        QStringList row{eval::roundTripText(table.xs[r])};
        for (const double v : table.values[r])
            row << (csv && !std::isfinite(v) ? QString() : tableCellText(v));
        text += row.join(separator) + lineEnd;
    }
    return text;
}

} // namespace curvix::plot
