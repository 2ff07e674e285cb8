#include "output/settings_store.h"

#include "model/strings.h"

#include <QSettings>

namespace curvix::output {

bool writeColorSettings(const model::AppState& state, QString* error)
{
    QSettings settings(QStringLiteral("Curvix"), QStringLiteral("Curvix"));
    settings.beginGroup(QStringLiteral("colors"));
    auto text = [](quint32 value) { return QString::number(static_cast<qint32>(value)); };
    settings.setValue(QStringLiteral("gridcolor"), text(state.gridColor));
    settings.setValue(QStringLiteral("axiscolor"), text(state.axisColor));
    settings.setValue(QStringLiteral("funccolor"), text(state.functionColor));
    settings.endGroup();
    settings.sync();
    if (settings.status() == QSettings::NoError)
        return true;
    if (error) {
        const int reason = settings.status() == QSettings::AccessError ? 5090 : 5091;
        *error = model::LoadResString(reason).arg(settings.fileName());
    }
    return false;
}

} // namespace curvix::output
