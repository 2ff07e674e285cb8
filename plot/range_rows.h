#pragma once

#include "model/view_window.h"

#include <QString>

#include <array>
#include <optional>

namespace curvix::plot {

using RangeRow = std::array<QString, 4>;

// Whether a range box of the x row takes this text while it is being typed: empty, a
// number, or a multiple of pi ("p", "-p", "2p"). A sign or decimal point alone stands
// for a number being begun.
bool acceptsRangeText(const QString& text);
// The same for the y row, which has no pi.
bool acceptsStepText(const QString& text);

struct ViewReading {
    std::optional<model::ViewWindow> view;
    QString problem; // why the rows make no view, for the status bar
};

// Reads the x row and the y row (minimum, maximum, step, ticks) into a view. Refused: a
// text that is no number, a minimum not below its maximum, a step of 0 or less where
// ticks are on, and values too large to draw.
ViewReading readViewWindow(const RangeRow& xRow, const RangeRow& yRow);

// The question that asks for the font size of the plot labels.
QString fontSizePrompt();

struct FontSizeAnswer {
    std::optional<int> size; // the new point size; none for no change or a problem
    QString problem;         // the text to show, asking to retry; empty when none
};

// Reads a typed font size: a number in the range boxes' syntax without pi, from 5 to 10,
// rounded half to even. An empty or blank answer changes nothing.
FontSizeAnswer readFontSize(const QString& text);

} // namespace curvix::plot
