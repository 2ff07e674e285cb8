#include "model/strings.h"

#include <QFile>
#include <QHash>

namespace curvix::model {

namespace {

// Lines are "number<TAB>text"; "\t" and "\n" inside a text are written as escapes.
QHash<int, QString> readTable()
{
    QHash<int, QString> table;
    QFile file(QStringLiteral(":/curvix/strings.tsv"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return table;
    const QString all = QString::fromUtf8(file.readAll());
    for (const QString& line : all.split(QLatin1Char('\n'))) {
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        const qsizetype tab = line.indexOf(QLatin1Char('\t'));
        bool ok = false;
        const int number = line.left(tab).toInt(&ok);
        if (tab < 0 || !ok)
            continue;
        QString text = line.mid(tab + 1);
        text.replace(QLatin1String("\\n"), QLatin1String("\n"));
        text.replace(QLatin1String("\\t"), QLatin1String("\t"));
        table.insert(number, text);
    }
    return table;
}

} // namespace

QString LoadResString(int number)
{
    static const QHash<int, QString> table = readTable();
    return table.value(number);
}

} // namespace curvix::model
