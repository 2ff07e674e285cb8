#include "app/entry_panel.h"

#include "app/form_names.h"
#include "app/fraction_input.h"
#include "app/function_box.h"
#include "app/pi_line_edit.h"
#include "app/plot_widget.h"
#include "app/token_pad.h"
#include "eval/formula.h"
#include "model/graph_list.h"
#include "model/strings.h"
#include "plot/colors.h"
#include "plot/formula_picture.h"

#include <QApplication>
#include <QDrag>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QRegularExpression>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace curvix::app {

using model::LoadResString;

namespace {

void appendTo(QLineEdit* edit, const QString& text)
{
    edit->setText(edit->text() + text);
    edit->setCursorPosition(int(edit->text().size()));
    edit->setFocus();
}

void appendPiOnce(PiLineEdit* box)
{
    if (!box->storedText().endsWith(QLatin1Char('p')))
        box->append(QStringLiteral("p"));
}

} // namespace

EntryPanel::EntryPanel(QWidget* window) : QObject(window), m_window(window)
{
    createEntryRow();
    createSidePanel();
    describeControls();
    connect(m_functionBox, &FunctionBox::enterPressed, this, &EntryPanel::drawRequested);
    connect(m_functionBox, &FunctionBox::escapePressed, this, [this] {
        if (m_editedText.isEmpty())
            return;
        setFunctionText(m_editedText);
        endEditing();
    });
    connect(m_drawButton, &QPushButton::clicked, this, &EntryPanel::drawRequested);
    connect(m_functionBox, &QComboBox::editTextChanged, this, &EntryPanel::showPreview);
    for (int i = 0; i < int(m_keys.size()); ++i)
        connect(m_keys[i], &QToolButton::clicked, this, [this, i] { pressToken(i); });
    m_focusConnection = connect(qApp, &QApplication::focusChanged, this,
                                [this](QWidget*, QWidget* now) { onFocusChanged(now); });
}

void EntryPanel::createEntryRow()
{
    m_entryRow = new QWidget;
    auto* row = new QHBoxLayout(m_entryRow);
    row->setContentsMargins(0, 0, 0, 0);
    m_labelEdit = named(new QLineEdit(QStringLiteral("f(x)")), QLatin1String(formName::labelEdit));
    m_labelEdit->setMaxLength(4);
    m_labelEdit->setFixedWidth(m_labelEdit->fontMetrics().horizontalAdvance(QStringLiteral("f(x)==")) + 12);
    m_labelEdit->installEventFilter(this);
    m_functionBox = named(new FunctionBox, QLatin1String(formName::functionBox));
    m_drawButton = named(new QPushButton(LoadResString(710)), QLatin1String(formName::drawButton));
    m_drawButton->setAutoDefault(false);
    m_editingNote = named(new QLabel(LoadResString(5147)), QLatin1String("editingNote"));
    m_editingNote->setStyleSheet(QStringLiteral("font-weight: bold"));
    m_editingNote->hide();
    row->addWidget(m_editingNote);
    row->addWidget(m_labelEdit);
    row->addWidget(new QLabel(QStringLiteral("=")));
    row->addWidget(m_functionBox, 1);
    row->addWidget(m_drawButton);
}

void EntryPanel::createSidePanel()
{
    m_sidePanel = new QWidget;
    auto* side = new QVBoxLayout(m_sidePanel);
    side->setContentsMargins(0, 0, 0, 0);
    auto* labelRow = new QHBoxLayout;
    m_labelText = named(new QLineEdit, QLatin1String(formName::labelText));
    m_labelText->setToolTip(LoadResString(2072));
    m_labelText->setDragEnabled(true);
    // Shown, and dragged onto the plot, with π for the formula character of pi.
    connect(m_labelText, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (!text.contains(eval::kPiChar))
            return;
        const int caret = m_labelText->cursorPosition();
        m_labelText->setText(QString(text).replace(eval::kPiChar, QChar(0x03C0)));
        m_labelText->setCursorPosition(caret);
    });
    labelRow->addWidget(new QLabel(LoadResString(2026)));
    labelRow->addWidget(m_labelText, 1);
    side->addLayout(labelRow);
    m_preview = named(new QLabel, QLatin1String(formName::formulaPreview));
    m_preview->setToolTip(LoadResString(2073));
    m_preview->setMinimumHeight(28);
    // The formula is typeset in black for the plot; preview it on the plot's paper.
    m_preview->setPalette(plot::plotPalette());
    m_preview->setBackgroundRole(QPalette::Base);
    m_preview->setAutoFillBackground(true);
    m_preview->setCursor(Qt::OpenHandCursor);
    m_preview->installEventFilter(this);
    side->addWidget(m_preview);

    auto* pad = new QGridLayout;
    pad->setSpacing(2);
    for (std::size_t i = 0; i < m_keys.size(); ++i) {
        m_keys[i] = named(new QToolButton, formNameAt(formName::keypadKey, int(i)));
        // A click never gives a key the focus, so that it types into the box that had it;
        // the Tab key reaches the keys, and Space presses one.
        m_keys[i]->setFocusPolicy(Qt::TabFocus);
        m_keys[i]->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        m_keys[i]->setText(QLatin1String(kTokens[i].caption));
        pad->addWidget(m_keys[i], kTokenPlaces[i][0], kTokenPlaces[i][1]);
    }
    m_keys[kPiToken]->setText(QString(QChar(0x03C0)));
    side->addLayout(pad);
    side->addStretch();
}

void EntryPanel::describeControls()
{
    describe(m_labelEdit, LoadResString(5040), LoadResString(2017));
    describe(m_functionBox, LoadResString(5041), LoadResString(2018));
    describe(m_drawButton, LoadResString(710), LoadResString(5042));
    describe(m_labelText, LoadResString(5061), QString());
    describe(m_preview, LoadResString(5062), QString());
    for (std::size_t i = 0; i < m_keys.size(); ++i)
        describe(m_keys[i], LoadResString(5000 + int(i)),
                 LoadResString(5067).arg(LoadResString(5000 + int(i))));
}

std::vector<QWidget*> EntryPanel::entryTabOrder() const
{
    return {m_labelEdit, m_functionBox, m_drawButton};
}

std::vector<QWidget*> EntryPanel::sideTabOrder() const
{
    std::vector<QWidget*> chain{m_labelText};
    std::array<std::size_t, 32> order{};
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::sort(order.begin(), order.end(),
              [](std::size_t a, std::size_t b) { return kTokenPlaces[a] < kTokenPlaces[b]; });
    for (std::size_t i : order)
        chain.push_back(m_keys[i]);
    return chain;
}

QString EntryPanel::functionText() const
{
    return m_functionBox->storedText();
}

void EntryPanel::setFunctionText(const QString& text)
{
    m_functionBox->setEditText(text);
}

void EntryPanel::beginEditing(const QString& text)
{
    m_editedText = text;
    setFunctionText(text);
    m_drawButton->setText(LoadResString(5144));
    m_editingNote->show();
    const QString shown = QString(text).replace(eval::kPiChar, QChar(0x03C0));
    emit statusMessage(LoadResString(5146).arg(shown));
    focusFunctionBox();
}

void EntryPanel::endEditing()
{
    m_editedText.clear();
    m_drawButton->setText(LoadResString(710));
    m_editingNote->hide();
    emit statusMessage({});
}

void EntryPanel::selectFunctionText()
{
    m_functionBox->commitText();
}

void EntryPanel::clearFunctionText()
{
    pressToken(kClearToken);
}

void EntryPanel::showItems(const std::vector<model::FunctionItem>& items,
                           const std::vector<QColor>& colors)
{
    m_functionBox->setItems(items, colors);
}

int EntryPanel::itemPosition(const std::vector<model::FunctionItem>& items) const
{
    const QString text = functionText();
    const int selected = m_functionBox->currentIndex();
    if (selected >= 0 && m_functionBox->storedItemText(selected) == text)
        return selected + 1;
    for (std::size_t i = 0; i < items.size(); ++i)
        if (items[i].text == text)
            return int(i) + 1;
    return -1;
}

void EntryPanel::pickItem(const QString& text, int row)
{
    m_functionBox->setEditText(text);
    m_functionBox->setCurrentIndex(row);
}

QString EntryPanel::labelText() const
{
    return m_labelEdit->text();
}

bool EntryPanel::labelIsValid() const
{
    static const QRegularExpression label(QStringLiteral("^([a-z]\\([a-z]\\)|[a-z])$"));
    return label.match(m_labelEdit->text()).hasMatch();
}

void EntryPanel::validateLabel()
{
    if (!labelIsValid()) {
        emit statusMessage(LoadResString(2027).arg(m_labelEdit->text()));
        // The box keeps the focus until it holds a label.
        QTimer::singleShot(0, m_labelEdit, [this] { m_labelEdit->setFocus(); });
        return;
    }
    m_keys[kVariableToken]->setText(model::labelVariable(m_labelEdit->text()));
    emit statusMessage(QString());
}

void EntryPanel::setBusy(bool busy)
{
    m_functionBox->lineEdit()->setReadOnly(busy);
    m_functionBox->setCursor(busy ? Qt::BusyCursor : Qt::ArrowCursor);
    m_functionBox->lineEdit()->setCursor(busy ? Qt::BusyCursor : Qt::IBeamCursor);
}

void EntryPanel::focusFunctionBox()
{
    m_functionBox->setFocus();
}

void EntryPanel::focusLabelText()
{
    m_labelText->setFocus();
}

QFont EntryPanel::labelFont() const
{
    return m_labelText->font();
}

void EntryPanel::onFocusChanged(QWidget* now)
{
    // Any other text box of the window becomes the target too, one the keys do not type in.
    if (qobject_cast<QLineEdit*>(now) && m_window->isAncestorOf(now))
        m_keypadTarget = now;
    for (QWidget* w = now; w; w = w->parentWidget()) {
        if (w == m_functionBox || w == m_labelText || (m_takesPi && m_takesPi(w))) {
            m_keypadTarget = w;
            return;
        }
        if (w == m_window)
            return;
    }
}

void EntryPanel::pressToken(int index)
{
    QLineEdit* box = m_functionBox->lineEdit();
    if (index == kClearToken) {
        box->clear();
        box->setFocus();
        return;
    }
    if (index == kPiToken) {
        if (m_keypadTarget == m_functionBox)
            appendTo(box, QString(eval::kPiChar));
        else if (m_keypadTarget == m_labelText)
            appendTo(m_labelText, QString(eval::kPiChar));
        else if (auto* fraction = qobject_cast<FractionInput*>(m_keypadTarget))
            appendPiOnce(fraction->field(fraction->activeField() == FractionInput::Whole
                                             ? FractionInput::Whole
                                             : FractionInput::Numerator));
        else if (auto* range = qobject_cast<PiLineEdit*>(m_keypadTarget); range && m_takesPi && m_takesPi(range))
            appendPiOnce(range);
        return;
    }
    if (m_keypadTarget != m_functionBox)
        return;
    appendTo(box, index == kVariableToken ? m_keys[kVariableToken]->text()
                                          : QLatin1String(kTokens[index].inserted));
}

void EntryPanel::setParameters(const eval::ParameterList& parameters)
{
    // Only the names matter to the preview: a slider's move leaves it alone.
    if (eval::parameterNames(parameters) == eval::parameterNames(m_parameters))
        return;
    m_parameters = parameters;
    showPreview();
}

void EntryPanel::showPreview()
{
    const QImage picture = plot::typesetFormula(functionText(), labelText(), labelFont(),
                                                m_preview->devicePixelRatioF(), m_parameters);
    m_previewFormula = picture.isNull() ? QString() : functionText();
    m_preview->setPixmap(picture.isNull() ? QPixmap() : QPixmap::fromImage(picture));
}

bool EntryPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_labelEdit && event->type() == QEvent::FocusOut)
        validateLabel();
    if (watched == m_preview && event->type() == QEvent::MouseButtonPress && !m_previewFormula.isEmpty()) {
        auto* drag = new QDrag(m_preview);
        auto* data = new QMimeData;
        data->setData(PlotWidget::formulaMimeType(), m_previewFormula.toUtf8());
        drag->setMimeData(data);
        drag->setPixmap(m_preview->pixmap());
        drag->exec(Qt::CopyAction);
        return true;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace curvix::app
