#include "app/color_actions.h"

#include "app/plot_view.h"
#include "app/plot_widget.h"
#include "model/strings.h"
#include "plot/colors.h"
#include "plot/range_rows.h"

#include <QSettings>
#include <QWidget>

#include <limits>

namespace curvix::app {

using model::LoadResString;

namespace {

constexpr QLatin1String kAutoColorsKey("autoColors");
constexpr QLatin1String kSmoothCurvesKey("smoothCurves");

// A switch of the Settings menu kept between runs, off until the user turns it on.
bool rememberedSwitch(QLatin1String key)
{
    return QSettings(QStringLiteral("Curvix"), QStringLiteral("Curvix")).value(key, false).toBool();
}

void rememberSwitch(QLatin1String key, bool on)
{
    QSettings(QStringLiteral("Curvix"), QStringLiteral("Curvix")).setValue(key, on);
}

} // namespace

ColorActions::ColorActions(model::AppState& state, model::Prompter& prompter, PlotView& view,
                           QWidget* window)
    : QObject(window), m_state(state), m_prompter(prompter), m_view(view), m_window(window)
{
    m_state.autoColors = rememberedSwitch(kAutoColorsKey);
    m_state.smoothCurves = rememberedSwitch(kSmoothCurvesKey);
}

quint32 ColorActions::askColor(bool axisTitle)
{
    if (axisTitle)
        m_colorTitle = LoadResString(461);
    if (const std::optional<quint32> chosen = m_prompter.chooseColor(m_colorTitle, m_dialogColor))
        m_dialogColor = *chosen;
    return m_dialogColor;
}

void ColorActions::chooseGridColor()
{
    m_state.gridColor = askColor(false);
    emit redrawNeeded();
}

void ColorActions::chooseAxisColor()
{
    m_state.axisColor = askColor(true);
    emit redrawNeeded();
}

void ColorActions::chooseFunctionColor()
{
    m_state.functionColor = askColor(true);
    // The function box's swatch of a text not drawn yet shows the new colour.
    emit curveColorsChanged();
    emit redrawNeeded();
}

void ColorActions::changeCurveColor(int entry)
{
    if (entry < 0 || std::size_t(entry) >= m_state.graphs.size())
        return;
    m_state.graphs[std::size_t(entry)].color = askColor(true);
    m_state.documentChanged = true;
    emit curveColorsChanged();
    emit redrawNeeded();
}

void ColorActions::setAutoColors(bool on)
{
    m_state.autoColors = on;
    rememberSwitch(kAutoColorsKey, on);
}

void ColorActions::setSmoothCurves(bool on)
{
    m_state.smoothCurves = on;
    rememberSwitch(kSmoothCurvesKey, on);
    emit redrawNeeded();
}

void ColorActions::chooseWindowColor()
{
    QPalette background = m_window->palette();
    // The window is chrome, not paper: it follows its own palette.
    background.setColor(QPalette::Window, plot::colorFromValue(askColor(true), background));
    m_window->setPalette(background);
}

void ColorActions::chooseFillColor()
{
    m_state.fillColor = askColor(true);
    emit redrawNeeded();
}

void ColorActions::fill()
{
    if (m_state.fills.size() >= std::size_t(std::numeric_limits<qint16>::max())) {
        m_prompter.message(LoadResString(2016));
        return;
    }
    m_state.fills.push_back({m_fillAnchor.x(), m_fillAnchor.y(), m_state.fillColor});
    m_state.documentChanged = true;
    emit redrawNeeded();
}

void ColorActions::chooseFontSize()
{
    PlotWidget* plot = m_view.plot();
    for (;;) {
        const std::optional<QString> answer =
            m_prompter.inputText(plot::fontSizePrompt(), QString::number(plot->font().pointSize()));
        if (!answer)
            return;
        const plot::FontSizeAnswer size = plot::readFontSize(*answer);
        if (!size.problem.isEmpty()) {
            if (m_prompter.ask(size.problem, model::Prompter::Buttons::RetryCancel) ==
                model::Prompter::Button::Retry)
                continue;
            return;
        }
        if (!size.size)
            return;
        QFont font = plot->font();
        font.setPointSize(*size.size);
        plot->setFont(font);
        emit redrawNeeded();
        return;
    }
}

} // namespace curvix::app
