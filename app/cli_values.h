#pragma once

#include "eval/parameters.h"
#include "model/app_state.h"
#include "output/export_picture.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace curvix::app::cli {

// The value of --angle: rad, deg or grad.
std::optional<model::AngleUnit> angleByName(const QString& name);
// The value of --size: "800x600" in pixels or "10x8cm" (a decimal point or comma) in
// centimetres.
std::optional<output::PictureSize> readSize(const QString& text);

// A number argument as the range boxes read it (a decimal point or comma whatever the
// locale, 2p for 2 pi), else with an exponent, else a calculation (p/2, 3π/4, sqrt(2)),
// else as the locale writes numbers.
std::optional<double> readNumberArgument(const QString& text);

// The values of --param, each NAME=VALUE: a new small letter other than e and the
// variable, and a number as --at takes it. Appends them to parameters; false with the
// problem (one line) at the first that is wrong.
bool readParameterArguments(const QStringList& values, const QString& variable,
                            eval::ParameterList& parameters, QString& problem);

// For a formula that only lacks parameters: a line naming the letters and how to give
// them with --param; nothing otherwise.
std::optional<QString> undeclaredParameters(const QString& formula, const QString& variable,
                                            const eval::ParameterList& parameters);

} // namespace curvix::app::cli
