#pragma once

#include "model/app_state.h"
#include "model/link_check.h"
#include "model/prompter.h"

#include <QString>

namespace curvix::model {

enum class AddResult {
    Ignored,   // not Enter, or an empty text
    Rejected,  // a second variable, a text that does not compile, or a full list
    Duplicate, // already drawn: nothing added, but the plot is redrawn
    Added,
};

inline constexpr int kEnterKey = 13;

// Adds the typed function to the graph list and the function box's items. A pending
// derivative or primitive source is linked when the link check agrees; it is asked only
// after the text passed every other rule. The caller redraws when the result is Added or
// Duplicate. The pending indexes are always cleared.
AddResult addFunction(AppState& state, Prompter& prompter, LinkCheck& links, const QString& text,
                      const QString& label, int keyCode = kEnterKey);

// Replaces entry k's function by a typed text, in place: the entry keeps its place, its
// colour and its tangent marks, and its derivative and primitive links stay where the link
// check confirms them for the new text. Added when replaced, Duplicate for the same text;
// Rejected, with a message and nothing changed, for a text that does not compile, another
// variable while other functions use this one, or a function drawn already.
AddResult replaceFunction(AppState& state, Prompter& prompter, LinkCheck& links, int k,
                          const QString& text, const QString& label);

// Removes the areas under entry k, with their read-outs.
void removeAreasOf(AppState& state, int k);

// Removes entry k. Only the first derivative link and the first primitive link that point
// at k are cleared; links to later entries keep their old numbers after the shift.
void removeGraphAt(AppState& state, int k);

// Deletes the drop-down item at a 1-based position and the entry of the same text. The
// items indented under it move up one level; the last item gone frees the variable.
// Returns false (and changes nothing) when there is no such item.
bool deleteFunctionItem(AppState& state, int position);

// Empties the drawing for a new one: the list, its items, the variable, the guide lines,
// the fills and the demonstration. Lowers the document-changed flag.
void clearDrawing(AppState& state);

// Index of the first entry whose text equals text exactly, -1 when none.
int findGraphByText(const AppState& state, const QString& text);
bool graphExists(const AppState& state, const QString& text);
// 1-based position of the first drop-down item with this text, -1 when none.
int findItemByText(const AppState& state, const QString& text);
int derivativeOf(const AppState& state, int k);
int primitiveOf(const AppState& state, int k);

// The colour a function added now takes: the function colour of the moment, or with
// automatic colours the palette colour that the fewest curves of the list have (the first
// such in palette order, so that the palette cycles as functions are added).
quint32 colorForNewFunction(const AppState& state);

// The variable letter of a label, "x" when it names none.
QString labelVariable(const QString& label);

} // namespace curvix::model
