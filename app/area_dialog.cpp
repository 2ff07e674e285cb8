#include "app/area_dialog.h"

#include "app/form_names.h"
#include "app/pi_line_edit.h"
#include "app/range_panel.h"
#include "eval/formula.h"
#include "eval/numtext.h"
#include "plot/coordinates.h"
#include "plot/range_rows.h"

#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>

#include <cmath>

namespace curvix::app {

namespace {

QString trArea(const char* text)
{
    return QCoreApplication::translate("AreaDialog", text);
}

} // namespace


std::optional<std::pair<double, double>> askAreaBounds(QWidget* parent, const QString& formulaText,
                                                       const QString& variable, double a, double b)
{
    QDialog dialog(parent);
    dialog.setObjectName(QStringLiteral("areaDialog"));
    dialog.setWindowTitle(
        trArea(QT_TRANSLATE_NOOP("AreaDialog", "Area under f(%1) = %2")).arg(variable, formulaText));
    auto* form = new QFormLayout(&dialog);
    auto* intro = new QLabel(
        trArea(QT_TRANSLATE_NOOP("AreaDialog", "The area between the curve and the x axis:")));
    intro->setWordWrap(true);
    form->addRow(intro);
    PiLineEdit* boxes[2] = {named(new PiLineEdit, QStringLiteral("areaFrom")),
                            named(new PiLineEdit, QStringLiteral("areaTo"))};
    const QString names[2] = {trArea(QT_TRANSLATE_NOOP("AreaDialog", "From")),
                              trArea(QT_TRANSLATE_NOOP("AreaDialog", "To"))};
    const double shown[2] = {a, b};
    for (int i = 0; i < 2; ++i) {
        boxes[i]->setText(exactRowText(shown[i], true));
        boxes[i]->setAlignment(Qt::AlignRight);
        describe(boxes[i], names[i],
                 trArea(QT_TRANSLATE_NOOP("AreaDialog",
                                          "A number or a calculation; p or π stands for pi, as in p/2")));
        const char* label = i == 0 ? QT_TRANSLATE_NOOP("AreaDialog", "&From %1 =")
                                   : QT_TRANSLATE_NOOP("AreaDialog", "&To %1 =");
        form->addRow(trArea(label).arg(variable), boxes[i]);
    }
    auto* problem = named(new QLabel, QStringLiteral("problem"));
    problem->setWordWrap(true);
    problem->setVisible(false);
    form->addRow(problem);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    form->addRow(buttons);

    std::pair<double, double> bounds;
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, [&] {
        double* read[2] = {&bounds.first, &bounds.second};
        for (int i = 0; i < 2; ++i) {
            const std::optional<double> number = plot::readNumberExpression(boxes[i]->storedText());
            if (!number) {
                problem->setText(trArea(QT_TRANSLATE_NOOP("AreaDialog",
                                                          "The %1 box needs a number, such as 0, %2, "
                                                          "2π or π/2."))
                                     .arg(names[i], eval::numberText(1.5)));
                problem->setVisible(true);
                dialog.adjustSize(); // room for the lines of the problem
                boxes[i]->setFocus();
                boxes[i]->selectAll();
                return;
            }
            *read[i] = *number;
        }
        dialog.accept();
    });
    boxes[0]->setFocus();
    boxes[0]->selectAll();
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return bounds;
}

} // namespace curvix::app
