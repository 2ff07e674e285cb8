#include "app/frmgraph.h"

#include "app/frmsettings.h"
#include "app/function_box.h"
#include "app/plot_widget.h"
#include "app/tool_icons.h"
#include "model/graph_list.h"
#include "model/strings.h"
#include "output/picture_file.h"
#include "output/settings_store.h"
#include "plot/colors.h"
#include "plot/coordinates.h"
#include "plot/render.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace curvix::app {

using model::LoadResString;

namespace {

// Tooltips show the menu texts without their mnemonic marks.
QString plainText(int number)
{
    QString text = LoadResString(number);
    text.remove(QLatin1Char('&'));
    return text;
}

template <typename W>
W* named(W* widget, const QString& name)
{
    widget->setObjectName(name);
    return widget;
}

} // namespace

frmgraph::frmgraph(model::Prompter& prompter, QWidget* parent)
    : QMainWindow(parent), m_prompter(prompter)
{
    setObjectName(QStringLiteral("frmgraph"));
    plot::InitPlotDefaults(m_state);
    createWidgets();
    createMenus();
    loadCaptions();
    connectHandlers();

    plot::FillRangeRow(Text4, m_state.presetDecimalX);
    plot::FillRangeRow(Text6, m_state.presetDecimalY);
    Option1[1]->setChecked(true);
    Check1->setChecked(false);
    Check2->setChecked(true);
    Check3->setChecked(true);
    Check4->setChecked(true);

    m_state.savedPlotWidth = Picture1->width();
    m_state.savedPlotHeight = Picture1->height();
    m_state.startView = m_state.view;
    resize(1100, 720);
    imgcombfunc->setFocus();
}

frmgraph::~frmgraph() = default;

void frmgraph::createWidgets()
{
    auto* central = new QWidget(this);
    auto* outer = new QVBoxLayout(central);

    auto* entryRow = new QHBoxLayout;
    Text5 = named(new QLineEdit(QStringLiteral("f(x)")), QStringLiteral("Text5"));
    Text5->setMaxLength(4);
    Text5->setFixedWidth(Text5->fontMetrics().horizontalAdvance(QStringLiteral("f(x)==")) + 12);
    imgcombfunc = named(new FunctionBox, QStringLiteral("imgcombfunc"));
    Command1 = named(new QPushButton, QStringLiteral("Command1_0"));
    Command1->setDefault(false);
    Command1->setAutoDefault(false);
    auto* equals = new QLabel(QStringLiteral("="));
    entryRow->addWidget(Text5);
    entryRow->addWidget(equals);
    entryRow->addWidget(imgcombfunc, 1);
    entryRow->addWidget(Command1);
    outer->addLayout(entryRow);

    auto* body = new QHBoxLayout;
    Picture1 = named(new PlotWidget, QStringLiteral("Picture1"));
    body->addWidget(Picture1, 1);

    auto* side = new QVBoxLayout;
    auto* ranges = new QGroupBox(LoadResString(2019));
    auto* grid = new QGridLayout(ranges);
    const int headers[4] = {2020, 2021, 2022, 2023};
    for (int c = 0; c < 4; ++c) {
        auto* header = new QLabel(LoadResString(headers[c]));
        header->setAlignment(Qt::AlignCenter);
        grid->addWidget(header, 0, c + 1);
    }
    grid->addWidget(new QLabel(QStringLiteral("x")), 1, 0);
    grid->addWidget(new QLabel(QStringLiteral("y")), 2, 0);
    for (int c = 0; c < 4; ++c) {
        Text4[c] = named(new QLineEdit, QStringLiteral("Text4_%1").arg(c));
        Text6[c] = named(new QLineEdit, QStringLiteral("Text6_%1").arg(c));
        for (QLineEdit* box : {Text4[c], Text6[c]}) {
            box->setFixedWidth(box->fontMetrics().horizontalAdvance(QStringLiteral("-0000.0")) + 10);
            box->setAlignment(Qt::AlignRight);
        }
        grid->addWidget(Text4[c], 1, c + 1);
        grid->addWidget(Text6[c], 2, c + 1);
    }
    side->addWidget(ranges);

    auto* angle = new QGroupBox(LoadResString(2015));
    auto* angleLayout = new QVBoxLayout(angle);
    for (int i = 0; i < 3; ++i) {
        Option1[i] = named(new QRadioButton, QStringLiteral("Option1_%1").arg(i));
        angleLayout->addWidget(Option1[i]);
    }
    Check1 = named(new QCheckBox, QStringLiteral("Check1"));
    angleLayout->addWidget(Check1);
    side->addWidget(angle);

    auto* drawing = new QHBoxLayout;
    Check2 = named(new QCheckBox(QStringLiteral("Rutnät")), QStringLiteral("Check2"));
    Check3 = named(new QCheckBox(QStringLiteral("X")), QStringLiteral("Check3"));
    Check4 = named(new QCheckBox(QStringLiteral("Y")), QStringLiteral("Check4"));
    Check3->setToolTip(LoadResString(2024));
    Check4->setToolTip(LoadResString(2025));
    drawing->addWidget(Check2);
    drawing->addWidget(Check3);
    drawing->addWidget(Check4);
    drawing->addStretch();
    side->addLayout(drawing);
    side->addStretch();
    body->addLayout(side);
    outer->addLayout(body, 1);
    setCentralWidget(central);

    auto* tools = new QToolBar(this);
    tools->setObjectName(QStringLiteral("toolbar"));
    tools->setMovable(false);
    tools->setIconSize(QSize(24, 24));
    for (std::size_t i = 0; i < Command5.size(); ++i) {
        Command5[i] = named(new QToolButton, QStringLiteral("Command5_%1").arg(i));
        Command5[i]->setAutoRaise(true);
        tools->addWidget(Command5[i]);
    }
    addToolBar(Qt::TopToolBarArea, tools);

    for (std::size_t i = 0; i < statusPanels.size(); ++i) {
        statusPanels[i] = named(new QLabel, QStringLiteral("StatusBar1_%1").arg(i + 1));
        statusBar()->addWidget(statusPanels[i], i == 4 ? 1 : 0);
    }
}

void frmgraph::createMenus()
{
    auto action = [this](QMenu* menu, const char* name) {
        QAction* a = menu->addAction(QString());
        a->setObjectName(QLatin1String(name));
        return a;
    };
    mnufile = menuBar()->addMenu(QString());
    mnunew = action(mnufile, "mnunew");
    mnusaveas = action(mnufile, "mnusaveas");
    mnuprint = action(mnufile, "mnuprint");
    mnufile->addSeparator();
    mnuexit = action(mnufile, "mnuexit");

    mnuedit = menuBar()->addMenu(QString());
    mnucopy = action(mnuedit, "mnucopy");

    mnuzoom = menuBar()->addMenu(QString());
    mnuzoomin = action(mnuzoom, "mnuzoomin");
    mnuzoomout = mnuzoom->addMenu(QString());
    mnuzoomout->setObjectName(QStringLiteral("mnuzoomout"));
    mnuzoominc = action(mnuzoomout, "mnuzoominc");
    mnuzoombeg = action(mnuzoomout, "mnuzoombeg");

    mnutool = menuBar()->addMenu(QString());
    mnutool->setObjectName(QStringLiteral("mnutool"));
    mnutangent = action(mnutool, "mnutangent");
    mnutrace = action(mnutool, "mnutrace");
    mnuderivative = action(mnutool, "mnuderivative");
    mnuprimitive = action(mnutool, "mnuprimitive");
    mnudelete = action(mnutool, "mnupop1");
    mnutool->addSeparator();
    mnufill = action(mnutool, "mnufill");
    mnuvertical = action(mnutool, "mnuvertical");
    menuhoriz = action(mnutool, "menuhoriz");

    mnusettings = menuBar()->addMenu(QString());
    mnucolor = mnusettings->addMenu(QString());
    mnucolor->setObjectName(QStringLiteral("mnucolor"));
    mnucolgrid = action(mnucolor, "mnucolgrid");
    mnucolaxis = action(mnucolor, "mnucolaxis");
    mnucolfunc = action(mnucolor, "mnucolfunc");
    mnucolwind = action(mnucolor, "mnucolwind");
    mnucolfill = action(mnucolor, "mnucolfill");
    mnufontsize = action(mnusettings, "mnufontsize");
    mnucoord = action(mnusettings, "mnucoord");

    mnuhelp = menuBar()->addMenu(QString());
    mnucont = action(mnuhelp, "mnucont");
    mnusearch = action(mnuhelp, "mnusearch");
    mnuhelp->addSeparator();
    mnuabout = action(mnuhelp, "mnuabout");

    mnusaveas->setShortcut(QKeySequence::Save);
    mnuprint->setShortcut(QKeySequence::Print);
    mnucopy->setShortcut(QKeySequence::Copy);
    mnuexit->setShortcut(QKeySequence::Quit);
    mnunew->setShortcut(QKeySequence::New);
    mnucont->setShortcut(QKeySequence::HelpContents);

    // Commands that arrive with later parts of the program stay visible but disabled.
    for (QAction* later :
         {mnunew, mnuprint, mnucopy, mnuzoomin, mnuzoominc, mnuzoombeg, mnutangent, mnutrace,
          mnuderivative, mnuprimitive, mnudelete, mnufill, mnuvertical, menuhoriz, mnucolgrid,
          mnucolaxis, mnucolfunc, mnucolwind, mnucolfill, mnufontsize, mnucont, mnusearch,
          mnuabout})
        later->setEnabled(false);
    mnuzoomout->setEnabled(false);
}

void frmgraph::loadCaptions()
{
    setWindowTitle(LoadResString(1));
    Command1->setText(LoadResString(710));
    Option1[0]->setText(LoadResString(452));
    Option1[1]->setText(LoadResString(453));
    Option1[2]->setText(LoadResString(454));
    Check1->setText(LoadResString(456));
    Text4[3]->setToolTip(LoadResString(465));
    Text6[3]->setToolTip(LoadResString(465));
    Text5->setToolTip(LoadResString(2017));
    imgcombfunc->setToolTip(LoadResString(2018));

    mnufile->setTitle(LoadResString(2000));
    mnunew->setText(LoadResString(426));
    mnusaveas->setText(LoadResString(428) + QStringLiteral("..."));
    mnuprint->setText(LoadResString(429) + QStringLiteral("..."));
    mnuexit->setText(LoadResString(2001));
    mnuedit->setTitle(LoadResString(2002));
    mnucopy->setText(LoadResString(427));
    mnuzoom->setTitle(LoadResString(2003));
    mnuzoomin->setText(LoadResString(491));
    mnuzoomout->setTitle(LoadResString(492));
    mnuzoominc->setText(LoadResString(489));
    mnuzoombeg->setText(LoadResString(490));
    mnutool->setTitle(LoadResString(2004));
    mnutangent->setText(LoadResString(475));
    mnutrace->setText(LoadResString(484));
    mnuderivative->setText(LoadResString(486));
    mnuprimitive->setText(LoadResString(485));
    mnudelete->setText(LoadResString(469));
    mnufill->setText(LoadResString(477));
    mnuvertical->setText(LoadResString(478));
    menuhoriz->setText(LoadResString(480));
    mnusettings->setTitle(LoadResString(2005));
    mnucolor->setTitle(LoadResString(431));
    mnucolgrid->setText(LoadResString(433));
    mnucolaxis->setText(LoadResString(434));
    mnucolfunc->setText(LoadResString(435));
    mnucolwind->setText(LoadResString(488));
    mnucolfill->setText(LoadResString(479));
    mnufontsize->setText(LoadResString(470));
    mnucoord->setText(LoadResString(2006));
    mnuhelp->setTitle(LoadResString(2007));
    mnucont->setText(LoadResString(2008));
    mnusearch->setText(LoadResString(2009));
    mnuabout->setText(LoadResString(2010));

    const int tips[11] = {429, 491, 492, 484, 475, 486, 485, 469, 428, 426, 474};
    for (std::size_t i = 0; i < Command5.size(); ++i) {
        Command5[i]->setToolTip(plainText(tips[i]));
        Command5[i]->setIcon(toolIcon(int(i), palette().color(QPalette::ButtonText)));
    }
}

void frmgraph::connectHandlers()
{
    connect(imgcombfunc, &FunctionBox::enterPressed, this,
            [this] { imgcombfunc_KeyPress(model::kEnterKey); });
    connect(Command1, &QPushButton::clicked, this,
            [this] { imgcombfunc_KeyPress(model::kEnterKey); });
    for (QCheckBox* box : {Check2, Check3, Check4})
        connect(box, &QCheckBox::clicked, this, &frmgraph::checkBoxClicked);
    connect(Picture1, &PlotWidget::resized, this, &frmgraph::frmPicture1_Resize);

    connect(mnusaveas, &QAction::triggered, this, [this] { saveAs(); });
    connect(mnuexit, &QAction::triggered, this, &QWidget::close);
    connect(mnucoord, &QAction::triggered, this, &frmgraph::openSettings);

    // Each tool button runs the menu command of the same name; zoom out opens its menu.
    const std::array<QAction*, 11> commands = {
        mnuprint,     mnuzoomin, nullptr,   mnutrace, mnutangent, mnuderivative,
        mnuprimitive, mnudelete, mnusaveas, mnunew,   mnucolfunc};
    Command5[2]->setMenu(mnuzoomout);
    Command5[2]->setPopupMode(QToolButton::InstantPopup);
    Command5[2]->setEnabled(mnuzoomout->isEnabled());
    for (std::size_t i = 0; i < Command5.size(); ++i) {
        QAction* command = commands[i];
        QToolButton* button = Command5[i];
        if (!command)
            continue;
        button->setEnabled(command->isEnabled());
        connect(command, &QAction::changed, button,
                [button, command] { button->setEnabled(command->isEnabled()); });
        connect(button, &QToolButton::clicked, command, &QAction::trigger);
    }
}

void frmgraph::frmPicture1_Resize()
{
    QImage& image = Picture1->image();
    const QSize pixels = Picture1->devicePixelSize();
    if (image.size() != pixels) {
        image = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(Picture1->devicePixelRatioF());
    }
    plot::RedrawOptions options;
    options.grid = Check2->isChecked();
    options.arrows = Check3->isChecked();
    options.tickLabels = Check4->isChecked();
    options.exactTrig = Check1->isChecked();
    options.font = Picture1->font();
    plot::frmPicture1_Resize(m_state, image, options,
                             [this](const QString& text) { m_prompter.message(text); });
    Picture1->update();
}

void frmgraph::imgcombfunc_KeyPress(int keyCode)
{
    const model::AddResult result =
        model::addFunction(m_state, m_prompter, imgcombfunc->currentText(), Text5->text(), keyCode);
    if (result == model::AddResult::Added)
        showFunctionItems();
    // The drawn text stays for editing, selected so that typing starts the next function.
    if (result == model::AddResult::Added || result == model::AddResult::Duplicate)
        imgcombfunc->lineEdit()->selectAll();
    if (result == model::AddResult::Added || result == model::AddResult::Duplicate)
        frmPicture1_Resize();
}

void frmgraph::showFunctionItems()
{
    imgcombfunc->setItems(m_state.functionItems);
}

void frmgraph::checkBoxClicked()
{
    if (m_state.settingUp)
        return;
    frmPicture1_Resize();
}

void frmgraph::openSettings()
{
    if (!m_settings) {
        m_settings = new frmsettings(m_state, this);
        connect(m_settings, &frmsettings::closedWithRedraw, this, &frmgraph::frmPicture1_Resize);
        connect(m_settings, &QObject::destroyed, this, [this] { m_settings = nullptr; });
    }
    m_settings->show();
    m_settings->raise();
    m_settings->activateWindow();
}

bool frmgraph::saveAs()
{
    const QString title = LoadResString(428).mid(1);
    const QString folder = output::graphsFolder(LoadResString(9));
    const QString fileName =
        m_prompter.saveFileName(title, folder, output::saveFilter(LoadResString(23)));
    if (fileName.isEmpty()) {
        m_state.saveCancelled = true;
        return false;
    }
    QString error;
    if (!output::writePicture(Picture1->image(), fileName, &error)) {
        m_prompter.message(error);
        m_state.saveCancelled = true;
        return false;
    }
    m_state.saveCancelled = false;
    m_state.documentChanged = false;
    return true;
}

void frmgraph::closeEvent(QCloseEvent* event)
{
    if (m_state.documentChanged) {
        switch (m_prompter.ask(LoadResString(620), model::Prompter::Buttons::YesNoCancel)) {
        case model::Prompter::Button::Cancel:
            event->ignore();
            return;
        case model::Prompter::Button::Yes:
            if (!saveAs()) {
                event->ignore();
                return;
            }
            break;
        default:
            break;
        }
    }
    if (m_settings)
        m_settings->close();
    output::writeColorSettings(m_state);
    event->accept();
}

} // namespace curvix::app
