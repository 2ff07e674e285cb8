#pragma once

#include <QString>

class QWidget;

namespace curvix::app {

// The manual's topic of a control, as "page.html#section": the topic of the control, or else
// of the nearest parent that has one, or else the manual's start page. A widget may name its
// topic in the dynamic property "helpTopic", which comes before the program's table.
QString helpTopicFor(const QWidget* focused);

// F1 anywhere in the program opens the manual at the topic of the focused control, in a help
// window belonging to the control's window, so that it can be read beside a modal dialog.
// Installed once for the application; later calls do nothing.
void installContextHelp();

} // namespace curvix::app
