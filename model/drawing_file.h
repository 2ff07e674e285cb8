#pragma once

#include "model/drawing.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace curvix::model {

// The drawing file (.curvix): indented JSON, described in docs/drawing-format.md.
inline constexpr char kDrawingFormatName[] = "curvix-drawing";
inline constexpr int kDrawingFormatVersion = 1;
inline constexpr char kDrawingFileSuffix[] = "curvix";

// Limits a file must keep to; larger is taken for a damaged or hostile file.
inline constexpr qint64 kMaxDrawingFileBytes = qint64(8) * 1024 * 1024;
inline constexpr qsizetype kMaxFunctions = 10000;
inline constexpr qsizetype kMaxListEntries = 100000; // fills, guide lines, labels, tangents
inline constexpr qsizetype kMaxZoomSteps = 10000;
inline constexpr qsizetype kMaxTextLength = 10000;
inline constexpr qsizetype kMaxParameters = 26; // one for each letter at most

// The file's bytes. The same drawing always gives the same bytes, and reading them back
// gives an equal drawing (numbers are written in their shortest exact form; -0 becomes 0).
QByteArray writeDrawing(const Drawing& drawing);

// The drawing the bytes describe, or nothing with the reason in *error: "not a Curvix
// drawing", "made by a newer Curvix (format version N)", "the file is damaged: ...",
// "field 'view.xMax' is not a number", and the like.
std::optional<Drawing> readDrawing(const QByteArray& bytes, QString* error = nullptr);

// Writes through QSaveFile, so that a failed save leaves the old file whole. The message
// names the file and the reason.
bool saveDrawingFile(const QString& path, const Drawing& drawing, QString* error = nullptr);

// Reads and checks a file; the message names the file and what is wrong with it.
std::optional<Drawing> openDrawingFile(const QString& path, QString* error = nullptr);

} // namespace curvix::model
