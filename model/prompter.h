#pragma once

#include <QString>
#include <QtGlobal>

#include <optional>

class QPrinter;

namespace curvix::model {

// Every message box and dialog of the program goes through this port, so that the core
// reports in plain text and tests answer dialogs from a script.
class Prompter {
public:
    enum class Button { Ok, Yes, No, Cancel, Retry };
    enum class Buttons { Ok, YesNo, YesNoCancel, OkCancel, RetryCancel };

    virtual ~Prompter() = default;

    // A plain message box: no title of its own, OK only.
    virtual void message(const QString& text) = 0;
    virtual Button ask(const QString& text, Buttons buttons) = 0;
    // A colour as 0x00BBGGRR; nothing when the user cancelled.
    virtual std::optional<quint32> chooseColor(const QString& title, quint32 initial) = 0;
    virtual std::optional<QString> inputText(const QString& prompt, const QString& initial) = 0;
    // The chosen file name, or "" when the user cancelled. selectedFilter, when given, is
    // the file type offered first and the one chosen.
    virtual QString saveFileName(const QString& title, const QString& folder, const QString& filter,
                                 QString* selectedFilter = nullptr) = 0;
    virtual QString openFileName(const QString& title, const QString& folder,
                                 const QString& filter) = 0;
    // The printer dialog for the given printer; false when the user cancelled.
    virtual bool printerSetup(QPrinter& printer) = 0;
};

} // namespace curvix::model
