#pragma once

#include "model/prompter.h"

#include <QStringList>
#ifdef QT_PRINTSUPPORT_LIB
#include <QPrinter>
#endif

#include <deque>

// A Prompter for tests: records every text it is shown and answers from queues. A
// question it has no answer for is recorded as unexpected and answered with Cancel.
class ScriptedPrompter : public curvix::model::Prompter {
public:
    QStringList messages;
    QStringList questions;
    QStringList unexpected;
    std::deque<Button> answers;
    std::deque<std::optional<quint32>> colors;
    std::deque<QString> inputs; // a null QString answers Cancel
    std::deque<QString> fileNames;
    QStringList saveDialogs; // "title|folder|filter" of each save dialog shown
    QStringList colorTitles; // the title of each colour dialog shown
    // The printer dialog prints into this PDF file; an empty name cancels it.
    QString printToPdf;
    int printerDialogs = 0;

    void message(const QString& text) override { messages << text; }

    Button ask(const QString& text, Buttons) override
    {
        questions << text;
        if (answers.empty()) {
            unexpected << text;
            return Button::Cancel;
        }
        const Button b = answers.front();
        answers.pop_front();
        return b;
    }

    std::optional<quint32> chooseColor(const QString& title, quint32) override
    {
        colorTitles << title;
        if (colors.empty()) {
            unexpected << title;
            return std::nullopt;
        }
        auto c = colors.front();
        colors.pop_front();
        return c;
    }

    bool printerSetup([[maybe_unused]] QPrinter& printer) override
    {
        ++printerDialogs;
        if (printToPdf.isEmpty())
            return false;
#ifdef QT_PRINTSUPPORT_LIB
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(printToPdf);
        return true;
#else
        return false;
#endif
    }

    std::optional<QString> inputText(const QString& prompt, const QString&) override
    {
        if (inputs.empty()) {
            unexpected << prompt;
            return std::nullopt;
        }
        const QString text = inputs.front();
        inputs.pop_front();
        if (text.isNull())
            return std::nullopt;
        return text;
    }

    QString saveFileName(const QString& title, const QString& folder,
                         const QString& filter) override
    {
        saveDialogs << title + QLatin1Char('|') + folder + QLatin1Char('|') + filter;
        if (fileNames.empty()) {
            unexpected << title;
            return {};
        }
        const QString name = fileNames.front();
        fileNames.pop_front();
        return name;
    }
};
