#include "output/settings_store.h"

#include <QSettings>

namespace curvix::output {

void writeColorSettings(const model::AppState& state)
{
    QSettings settings(QStringLiteral("Curvix"), QStringLiteral("Curvix"));
    settings.beginGroup(QStringLiteral("colors"));
    auto text = [](quint32 value) { return QString::number(static_cast<qint32>(value)); };
    settings.setValue(QStringLiteral("gridcolor"), text(state.gridColor));
    settings.setValue(QStringLiteral("axiscolor"), text(state.axisColor));
    settings.setValue(QStringLiteral("funccolor"), text(state.functionColor));
    settings.endGroup();
    settings.sync();
}

} // namespace curvix::output
