#include "plot/colors.h"


namespace curvix::plot {

namespace {

constexpr quint32 kSystemColorBit = 0x80000000u;

QPalette::ColorRole systemColorRole(quint32 index, QPalette::ColorGroup& group)
{
    group = QPalette::Active;
    switch (index) {
    case 0: return QPalette::Mid;             // scroll bar
    case 1: return QPalette::Window;          // desktop
    case 2: return QPalette::Highlight;       // active caption
    case 3: return QPalette::Mid;             // inactive caption
    case 4: return QPalette::Window;          // menu
    case 5: return QPalette::Base;            // window
    case 6: return QPalette::Shadow;          // window frame
    case 7: return QPalette::WindowText;      // menu text
    case 8: return QPalette::Text;            // window text
    case 9: return QPalette::HighlightedText; // caption text
    case 10: return QPalette::Mid;            // active border
    case 11: return QPalette::Midlight;       // inactive border
    case 12: return QPalette::Dark;           // application workspace
    case 13: return QPalette::Highlight;
    case 14: return QPalette::HighlightedText;
    case 15: return QPalette::Button;
    case 16: return QPalette::Dark; // button shadow
    case 17: group = QPalette::Disabled; return QPalette::Text;
    case 18: return QPalette::ButtonText;
    case 19: group = QPalette::Disabled; return QPalette::WindowText;
    case 20: return QPalette::Light;
    case 21: return QPalette::Shadow;
    case 22: return QPalette::Midlight;
    case 23: return QPalette::ToolTipText;
    case 24: return QPalette::ToolTipBase;
    default: return QPalette::WindowText;
    }
}

} // namespace

QColor colorFromValue(quint32 value, const QPalette& palette)
{
    if (value & kSystemColorBit) {
        QPalette::ColorGroup group;
        const QPalette::ColorRole role = systemColorRole(value & 0xFFu, group);
        return palette.color(group, role);
    }
    return QColor(int(value & 0xFFu), int((value >> 8) & 0xFFu), int((value >> 16) & 0xFFu));
}

const QPalette& plotPalette()
{
    static const QPalette palette = [] {
        const QColor window(239, 239, 239);
        QPalette light(window, window);
        light.setColor(QPalette::Light, Qt::white);
        light.setColor(QPalette::Midlight, QColor(202, 202, 202));
        light.setColor(QPalette::Mid, QColor(184, 184, 184));
        light.setColor(QPalette::Dark, QColor(159, 159, 159));
        light.setColor(QPalette::Shadow, QColor(118, 118, 118));
        light.setColor(QPalette::Highlight, QColor(48, 140, 198));
        light.setColor(QPalette::HighlightedText, Qt::white);
        light.setColor(QPalette::Base, Qt::white);
        light.setColor(QPalette::Text, Qt::black);
        light.setColor(QPalette::WindowText, Qt::black);
        light.setColor(QPalette::ButtonText, Qt::black);
        light.setColor(QPalette::ToolTipBase, QColor(255, 255, 220));
        light.setColor(QPalette::ToolTipText, Qt::black);
        light.setColor(QPalette::Disabled, QPalette::Text, QColor(190, 190, 190));
        light.setColor(QPalette::Disabled, QPalette::WindowText, QColor(190, 190, 190));
        return light;
    }();
    return palette;
}

QColor colorFromValue(quint32 value)
{
    return colorFromValue(value, plotPalette());
}

quint32 colorValueFromColor(const QColor& color)
{
    const QColor rgb = color.toRgb();
    return quint32(rgb.red()) | (quint32(rgb.green()) << 8) | (quint32(rgb.blue()) << 16);
}

} // namespace curvix::plot
