#include "output/save_name.h"

#include "model/strings.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace curvix::output {

QStringList filterEndings(const QString& filter)
{
    static const QRegularExpression pattern(QStringLiteral("\\*\\.([A-Za-z0-9]+)"));
    QStringList endings;
    for (const QRegularExpressionMatch& match : pattern.globalMatch(filter))
        endings << match.captured(1).toLower();
    return endings;
}

QString askSaveName(model::Prompter& prompter, const QString& title, const QString& folder,
                    const QString& filter, QString* selectedFilter)
{
    const QStringList types = filter.split(QStringLiteral(";;"));
    const QStringList known = filterEndings(filter);
    QString start = folder;
    for (;;) {
        QString name = prompter.saveFileName(title, start, filter, selectedFilter);
        if (name.isEmpty())
            return {};
        const QString ending = QFileInfo(name).suffix().toLower();
        if (ending.isEmpty()) {
            const QString chosen =
                selectedFilter && !selectedFilter->isEmpty() ? *selectedFilter : types.value(0);
            const QStringList chosenEndings = filterEndings(chosen);
            if (!chosenEndings.isEmpty())
                name += QLatin1Char('.') + chosenEndings.first();
        } else if (!known.contains(ending)) {
            prompter.message(model::LoadResString(2095).arg(QDir::toNativeSeparators(name),
                                                            types.join(QStringLiteral(", "))));
            start = name;
            continue;
        }
        // The dialog asked about the name typed, if at all; this is the name written.
        if (QFileInfo::exists(name) &&
            prompter.ask(model::LoadResString(2096).arg(QDir::toNativeSeparators(name)),
                         model::Prompter::Buttons::YesNo) != model::Prompter::Button::Yes) {
            start = name;
            continue;
        }
        return name;
    }
}

} // namespace curvix::output
