#pragma once

#include <QObject>
#include <QStandardPaths>
#include <QTemporaryDir>

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

// Saving creates a folder in the user's documents and the settings store writes a file:
// window tests get a home of their own and the test settings, never the user's.
inline bool useHomeOfItsOwn(const QTemporaryDir& home)
{
    qputenv("HOME", home.path().toLocal8Bit());
    qunsetenv("XDG_DOCUMENTS_DIR");
    QStandardPaths::setTestModeEnabled(true);
    return home.isValid();
}
