#pragma once

#include <QObject>

// A widget of a window by its object name; a missing one ends the test at once, since every
// later step would only fail less clearly.
template <typename W>
W* child(QObject* parent, const QString& name)
{
    W* w = parent->findChild<W*>(name);
    if (!w)
        qFatal("no widget %s", qPrintable(name));
    return w;
}
