#pragma once

#include "model/prompter.h"

#include <QString>
#include <QStringList>

namespace curvix::output {

// The endings a save dialog's filter names, lower case, in order: "PNG (*.png);;JPEG (*.jpg
// *.jpeg)" gives png, jpg, jpeg. One entry of a filter gives its own.
QStringList filterEndings(const QString& filter);

// Asks for the name of a file to write. A name without an ending takes the first ending of
// the type chosen (of the first type when none was chosen); a name whose ending no type of
// the filter names is refused with a message that lists the types, and the dialog opens
// again. Replacing a file is asked for the name that will be written; No opens the dialog
// again. "" when the user cancelled.
QString askSaveName(model::Prompter& prompter, const QString& title, const QString& folder,
                    const QString& filter, QString* selectedFilter);

} // namespace curvix::output
