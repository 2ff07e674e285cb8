#include "app/frmgraph.h"

#include "app/fraction_input.h"
#include "app/frmabout1.h"
#include "app/frmsettings.h"
#include "app/frmtangent.h"
#include "app/function_box.h"
#include "app/help_window.h"
#include "app/pi_line_edit.h"
#include "app/plot_frame.h"
#include "app/plot_label.h"
#include "app/plot_widget.h"
#include "app/token_pad.h"
#include "app/tool_icons.h"
#include "app/zoom_box.h"
#include "eval/formula.h"
#include "eval/numtext.h"
#include "model/graph_list.h"
#include "model/strings.h"
#include "output/capture.h"
#include "output/picture_file.h"
#include "output/settings_store.h"
#include "plot/colors.h"
#include "plot/coordinates.h"
#include "plot/angles.h"
#include "plot/formula_picture.h"
#include "plot/picking.h"
#include "plot/range_rows.h"
#include "plot/render.h"
#include "plot/zoom.h"

#include <QActionGroup>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QCloseEvent>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QPrinter>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QShortcut>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <limits>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <QWindow>
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
    createKeyboardShortcuts();

    loadRows(m_state.presetDecimalX, m_state.presetDecimalY);
    Option1[1]->setChecked(true);
    Check1->setChecked(false);
    Check2->setChecked(true);
    Check3->setChecked(true);
    Check4->setChecked(true);
    set_triginputcontrols(false);
    applyRangeRows();

    m_labelFont = Text2->font();
    m_state.symbolicOptions.whileWaiting = [] {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    };
    m_state.startView = m_state.view;
    resize(1100, 720);
    imgcombfunc->setFocus();
}

frmgraph::~frmgraph()
{
    // The application reports focus changes while this window is being taken apart.
    disconnect(m_focusConnection);
}

void frmgraph::createWidgets()
{
    auto* central = new QWidget(this);
    auto* outer = new QVBoxLayout(central);

    auto* entryRow = new QHBoxLayout;
    Text5 = named(new QLineEdit(QStringLiteral("f(x)")), QStringLiteral("Text5"));
    Text5->setMaxLength(4);
    Text5->setFixedWidth(Text5->fontMetrics().horizontalAdvance(QStringLiteral("f(x)==")) + 12);
    Text5->installEventFilter(this);
    imgcombfunc = named(new FunctionBox, QStringLiteral("imgcombfunc"));
    Command1 = named(new QPushButton, QStringLiteral("Command1_0"));
    Command1->setAutoDefault(false);
    entryRow->addWidget(Text5);
    entryRow->addWidget(new QLabel(QStringLiteral("=")));
    entryRow->addWidget(imgcombfunc, 1);
    entryRow->addWidget(Command1);
    outer->addLayout(entryRow);

    auto* body = new QHBoxLayout;
    Picture1 = named(new PlotWidget, QStringLiteral("Picture1"));
    m_plotFrame = new PlotFrame(Picture1);
    piczoombox = new ZoomBoxWidget(Picture1);
    // The grip in the plot's lower right corner.
    lblGrip = named(new QLabel(Picture1), QStringLiteral("lblGrip"));
    lblGrip->setFixedSize(8, 8);
    lblGrip->setCursor(Qt::SizeFDiagCursor);
    lblGrip->installEventFilter(this);
    lblGrip->setAutoFillBackground(true);
    QPalette grip = lblGrip->palette();
    grip.setColor(QPalette::Window, QColor(128, 128, 128));
    lblGrip->setPalette(grip);
    body->addWidget(m_plotFrame, 1);
    body->addWidget(createEntryPanel());
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

    m_timer = new QTimer(this);
    m_timer->setInterval(40); // about 25 steps a second
    m_traceControls = named(new QWidget, QStringLiteral("traceControls"));
    auto* controls = new QHBoxLayout(m_traceControls);
    controls->setContentsMargins(0, 0, 0, 0);
    const char* names[3] = {"tracePlay", "tracePause", "traceStep"};
    const QString glyphs[3] = {QStringLiteral("\u25B6"), QStringLiteral("\u23F8"),
                               QStringLiteral("\u23ED")};
    const int tips[3] = {2061, 2062, 2063};
    for (int i = 0; i < 3; ++i) {
        auto* button = named(new QToolButton, QLatin1String(names[i]));
        button->setText(glyphs[i]);
        button->setToolTip(LoadResString(tips[i]));
        button->setFocusPolicy(Qt::NoFocus);
        controls->addWidget(button);
        connect(button, &QToolButton::clicked, this, [this, i] {
            if (i == 2)
                traceStep(1);
            else
                tracePlay(i == 0);
        });
    }
    statusBar()->addPermanentWidget(m_traceControls);
    m_traceControls->hide();

    m_demoControls = named(new QWidget, QStringLiteral("demoControls"));
    auto* demoRow = new QHBoxLayout(m_demoControls);
    demoRow->setContentsMargins(0, 0, 0, 0);
    const int demoTips[4] = {4005, 4006, 4007, 4008};
    for (int i = 0; i < 4; ++i) {
        Command3[i] = named(new QToolButton, QStringLiteral("Command3_%1").arg(i));
        Command3[i]->setIcon(demoIcon(i, palette().color(QPalette::ButtonText)));
        Command3[i]->setToolTip(plainText(demoTips[i]));
        Command3[i]->setFocusPolicy(Qt::NoFocus);
        Command3[i]->setAutoRaise(true);
        // No taller than the trace's buttons: the status bar keeps its height.
        Command3[i]->setIconSize(QSize(14, 14));
        demoRow->addWidget(Command3[i]);
    }
    m_demoControls->hide();
    statusBar()->addPermanentWidget(m_demoControls);
}

QWidget* frmgraph::createEntryPanel()
{
    auto* panel = new QWidget;
    auto* side = new QVBoxLayout(panel);
    side->setContentsMargins(0, 0, 0, 0);

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
        Text4[c] = named(new PiLineEdit, QStringLiteral("Text4_%1").arg(c));
        Text6[c] = named(new PiLineEdit, QStringLiteral("Text6_%1").arg(c));
        Text4[c]->setRule(plot::acceptsRangeText);
        Text6[c]->setRule(plot::acceptsStepText);
        for (PiLineEdit* box : {Text4[c], Text6[c]}) {
            box->setFixedWidth(box->fontMetrics().horizontalAdvance(QStringLiteral("-0000.0")) + 10);
            box->setAlignment(Qt::AlignRight);
            box->setContextMenuPolicy(Qt::CustomContextMenu);
        }
        grid->addWidget(Text4[c], 1, c + 1);
        grid->addWidget(Text6[c], 2, c + 1);
    }
    // In the fraction form these stand in for the x row's minimum, maximum and step.
    for (int c = 0; c < 3; ++c) {
        fracinput[c] = named(new FractionInput, QStringLiteral("fracinput_%1").arg(c));
        grid->addWidget(fracinput[c], 1, c + 1);
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
    drawing->addWidget(Check2);
    drawing->addWidget(Check3);
    drawing->addWidget(Check4);
    drawing->addStretch();
    side->addLayout(drawing);

    auto* labelRow = new QHBoxLayout;
    Text2 = named(new QLineEdit, QStringLiteral("Text2"));
    Text2->setToolTip(LoadResString(2072));
    Text2->setDragEnabled(true);
    labelRow->addWidget(new QLabel(LoadResString(2026)));
    labelRow->addWidget(Text2, 1);
    side->addLayout(labelRow);
    OLE1 = named(new QLabel, QStringLiteral("OLE1"));
    OLE1->setToolTip(LoadResString(2073));
    OLE1->setMinimumHeight(28);
    OLE1->setCursor(Qt::OpenHandCursor);
    OLE1->installEventFilter(this);
    side->addWidget(OLE1);

    auto* pad = new QGridLayout;
    pad->setSpacing(2);
    for (std::size_t i = 0; i < cmdtoken.size(); ++i) {
        cmdtoken[i] = named(new QToolButton, QStringLiteral("cmdtoken_%1").arg(i));
        // A click never gives a key the focus, so that it types into the box that had it;
        // the Tab key reaches the keys, and Space presses one.
        cmdtoken[i]->setFocusPolicy(Qt::TabFocus);
        cmdtoken[i]->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        cmdtoken[i]->setText(QLatin1String(kTokens[i].caption));
        pad->addWidget(cmdtoken[i], kTokenPlaces[i][0], kTokenPlaces[i][1]);
    }
    cmdtoken[kPiToken]->setText(QString(QChar(0x03C0)));
    side->addLayout(pad);
    side->addStretch();
    return panel;
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
    mnutool->addSeparator();
    mnudemo = action(mnutool, "mnudemo");

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

    // The number form of the exact trigonometric scale, offered on the range boxes.
    mnupop2 = new QMenu(this);
    mnupop2->setObjectName(QStringLiteral("mnupop2"));
    mnupop21 = action(mnupop2, "mnupop21");
    mnupop22 = action(mnupop2, "mnupop22");
    auto* form = new QActionGroup(this);
    for (QAction* a : {mnupop21, mnupop22}) {
        a->setCheckable(true);
        form->addAction(a);
    }
    mnupop21->setChecked(true);

    // The popup menu of a function, on a right-click near its curve.
    mnupop = new QMenu(this);
    mnupop->setObjectName(QStringLiteral("mnupop"));
    mnupopderiv = action(mnupop, "mnupopderiv");
    mnupopprim = action(mnupop, "mnupopprim");
    mnupop->addAction(mnutangent);
    mnuremovetangents = action(mnupop, "mnuremovetangents");
    mnupopdemo = action(mnupop, "mnupopdemo");
    mnupop->addSeparator();
    mnupop->addAction(mnudelete);

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
    mnutangent->setCheckable(true);
    mnutrace->setCheckable(true);
}

void frmgraph::loadCaptions()
{
    setWindowTitle(LoadResString(1));
    setWindowIcon(curvixIcon());
    Command1->setText(LoadResString(710));
    Check3->setToolTip(LoadResString(2024));
    Check4->setToolTip(LoadResString(2025));
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
    mnuzoomin->setShortcut(QKeySequence::ZoomIn);
    mnuzoominc->setShortcut(QKeySequence::ZoomOut);
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
    mnudemo->setText(LoadResString(4000) + QStringLiteral("..."));
    mnupopdemo->setText(LoadResString(4000) + QStringLiteral("..."));
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
    mnupop21->setText(LoadResString(472));
    mnupopderiv->setText(QStringLiteral("&Derivata"));
    mnupopprim->setText(QStringLiteral("&Primitiv funktion"));
    mnuremovetangents->setText(LoadResString(2060));
    mnupop22->setText(LoadResString(473));

    const int tips[11] = {429, 491, 492, 484, 475, 486, 485, 469, 428, 426, 474};
    for (std::size_t i = 0; i < Command5.size(); ++i) {
        Command5[i]->setToolTip(plainText(tips[i]));
        Command5[i]->setIcon(toolIcon(int(i), palette().color(QPalette::ButtonText)));
    }
    // Every menu command has a letter of its own for the keyboard.
    mnutrace->setText(LoadResString(5070));
    mnuderivative->setText(LoadResString(5071));
    mnuprimitive->setText(LoadResString(5072));
    mnuzoomin->setText(LoadResString(5073));
    mnuzoomout->setTitle(LoadResString(5074));
    mnuzoominc->setText(LoadResString(5075));
    mnuzoombeg->setText(LoadResString(5076));
    mnudemo->setText(LoadResString(5077) + QStringLiteral("..."));
    mnupopdemo->setText(LoadResString(5077) + QStringLiteral("..."));
    describeWidgets();
}

void frmgraph::describeWidgets()
{
    auto describe = [](QWidget* widget, const QString& name, const QString& tip) {
        widget->setAccessibleName(name);
        if (!tip.isEmpty())
            widget->setToolTip(tip);
    };
    describe(Text5, LoadResString(5040), QString());
    describe(imgcombfunc, LoadResString(5041), QString());
    describe(Command1, LoadResString(710), LoadResString(5042));
    for (int c = 0; c < 4; ++c) {
        const int tip = c == 3 ? 465 : 5051 + c;
        describe(Text4[c], LoadResString(5043 + c), LoadResString(tip));
        describe(Text6[c], LoadResString(5047 + c), LoadResString(tip));
    }
    for (int c = 0; c < 3; ++c)
        describe(fracinput[c], LoadResString(5054).arg(LoadResString(5043 + c)), LoadResString(5055));
    for (int i = 0; i < 3; ++i)
        describe(Option1[i], plainText(452 + i), LoadResString(5056 + i));
    describe(Check1, plainText(456), LoadResString(5059));
    describe(Check2, Check2->text(), LoadResString(5060));
    describe(Check3, LoadResString(2024), QString());
    describe(Check4, LoadResString(2025), QString());
    describe(Text2, LoadResString(5061), QString());
    describe(OLE1, LoadResString(5062), QString());
    describe(Picture1, LoadResString(5063), LoadResString(5064));
    describe(lblGrip, LoadResString(5065), LoadResString(5065));
    for (std::size_t i = 0; i < cmdtoken.size(); ++i)
        describe(cmdtoken[i], LoadResString(5000 + int(i)),
                 LoadResString(5067).arg(LoadResString(5000 + int(i))));
    for (QToolButton* button : Command5)
        describe(button, button->toolTip(), QString());
    for (QToolButton* button : Command3)
        describe(button, button->toolTip(), QString());
    for (QToolButton* button : m_traceControls->findChildren<QToolButton*>())
        describe(button, button->toolTip(), QString());
    for (std::size_t i = 0; i < statusPanels.size(); ++i)
        describe(statusPanels[i], LoadResString(5066).arg(i + 1), QString());

    // The tab order follows the layout: the entry row, the range rows, the angle options,
    // the check boxes, the label text and the keypad. The tool bar's buttons repeat menu
    // commands and stay out of it.
    std::vector<QWidget*> chain{Text5, imgcombfunc, Command1};
    for (int c = 0; c < 4; ++c) {
        chain.push_back(Text4[c]);
        if (c < 3)
            chain.push_back(fracinput[c]);
    }
    for (PiLineEdit* box : Text6)
        chain.push_back(box);
    for (QRadioButton* option : Option1)
        chain.push_back(option);
    for (QWidget* w : std::initializer_list<QWidget*>{Check1, Check2, Check3, Check4, Text2})
        chain.push_back(w);
    std::array<std::size_t, 32> pad{};
    for (std::size_t i = 0; i < pad.size(); ++i)
        pad[i] = i;
    std::sort(pad.begin(), pad.end(), [](std::size_t a, std::size_t b) {
        return kTokenPlaces[a] < kTokenPlaces[b];
    });
    for (std::size_t i : pad)
        chain.push_back(cmdtoken[i]);
    for (std::size_t i = 1; i < chain.size(); ++i)
        setTabOrder(chain[i - 1], chain[i]);
    for (QToolButton* button : Command5)
        button->setFocusPolicy(Qt::NoFocus);
}

void frmgraph::connectHandlers()
{
    connect(imgcombfunc, &FunctionBox::enterPressed, this,
            [this] { imgcombfunc_KeyPress(model::kEnterKey); });
    connect(Command1, &QPushButton::clicked, this,
            [this] { imgcombfunc_KeyPress(model::kEnterKey); });
    for (QCheckBox* box : {Check2, Check3, Check4})
        connect(box, &QCheckBox::clicked, this, &frmgraph::checkBoxClicked);
    connect(Check1, &QCheckBox::clicked, this, &frmgraph::Check1_Click);
    for (int i = 0; i < 3; ++i)
        connect(Option1[i], &QRadioButton::clicked, this, [this, i] { Option1_Click(i); });
    for (int i = 0; i < int(cmdtoken.size()); ++i)
        connect(cmdtoken[i], &QToolButton::clicked, this, [this, i] { cmdtoken_Click(i); });
    connect(Picture1, &PlotWidget::resized, this, &frmgraph::frmPicture1_Resize);
    m_focusConnection = connect(qApp, &QApplication::focusChanged, this,
                                [this](QWidget*, QWidget* now) { focusChanged(now); });

    // Enter in a range box shows the new range at once.
    auto applyAndRedraw = [this] {
        if (applyRangeRows())
            frmPicture1_Resize();
    };
    for (const auto& row : {Text4, Text6}) {
        for (PiLineEdit* box : row) {
            connect(box, &QLineEdit::returnPressed, this, applyAndRedraw);
            connect(box, &QWidget::customContextMenuRequested, this,
                    [this, box](QPoint at) { mnupop2->popup(box->mapToGlobal(at)); });
        }
    }
    for (FractionInput* fraction : fracinput)
        for (auto field : {FractionInput::Whole, FractionInput::Numerator, FractionInput::Denominator})
            connect(fraction->field(field), &QLineEdit::returnPressed, this, applyAndRedraw);

    connect(mnuzoomin, &QAction::triggered, this, &frmgraph::mnuzoomin_Click);
    connect(mnuzoominc, &QAction::triggered, this, [this] { zoom(1, false); });
    connect(mnuzoombeg, &QAction::triggered, this, [this] { zoom(1, true); });
    connect(piczoombox, &ZoomBoxWidget::zoomRequested, this, [this] { zoom(0, false); });
    connect(piczoombox, &ZoomBoxWidget::cancelled, this, [this] { zoom(-1, false); });
    connect(Picture1, &PlotWidget::wheelTurned, this, &frmgraph::wheelZoom);
    connect(mnucolgrid, &QAction::triggered, this, &frmgraph::mnucolgrid_Click);
    connect(mnucolaxis, &QAction::triggered, this, &frmgraph::mnucolaxis_Click);
    connect(mnucolfunc, &QAction::triggered, this, &frmgraph::mnucolfunc_Click);
    connect(mnucolwind, &QAction::triggered, this, &frmgraph::mnucolwind_Click);
    connect(mnucolfill, &QAction::triggered, this, &frmgraph::mnucolfill_Click);
    connect(mnufill, &QAction::triggered, this, &frmgraph::mnufill_Click);
    connect(mnufontsize, &QAction::triggered, this, &frmgraph::mnufontsize_Click);
    connect(mnuvertical, &QAction::triggered, this, [this] { openGuideLines(1); });
    connect(menuhoriz, &QAction::triggered, this, [this] { openGuideLines(2); });
    connect(Picture1, &PlotWidget::rightButtonReleased, this, &frmgraph::Picture1_RightButtonUp);
    connect(mnunew, &QAction::triggered, this, &frmgraph::mnunew_Click);
    connect(mnudelete, &QAction::triggered, this, &frmgraph::mnupop1_Click);
    connect(mnupop21, &QAction::triggered, this, &frmgraph::mnupop21_Click);
    connect(mnupop22, &QAction::triggered, this, &frmgraph::mnupop22_Click);
    connect(mnusaveas, &QAction::triggered, this, &frmgraph::mnusaveas_Click);
    connect(mnucopy, &QAction::triggered, this, &frmgraph::mnucopy_Click);
    connect(mnucont, &QAction::triggered, this, [this] { showHelp(this, HelpTab::Contents); });
    connect(mnusearch, &QAction::triggered, this, [this] { showHelp(this, HelpTab::Search); });
    connect(mnuabout, &QAction::triggered, this, [this] {
        frmAbout1 about(m_prompter, this);
        about.exec();
    });
    connect(mnutangent, &QAction::toggled, this, &frmgraph::mnutangent_Click);
    connect(mnuremovetangents, &QAction::triggered, this, &frmgraph::removeTangents);
    connect(mnutrace, &QAction::toggled, this, &frmgraph::mnutrace_Click);
    connect(m_timer, &QTimer::timeout, this, &frmgraph::timerTick);
    connect(mnudemo, &QAction::triggered, this, &frmgraph::openDemonstration);
    connect(mnupopdemo, &QAction::triggered, this, &frmgraph::openDemonstration);
    connect(Command3[DemoStart], &QToolButton::clicked, this, [this] { demoPlay(true); });
    connect(Command3[DemoPause], &QToolButton::clicked, this, [this] { demoPlay(false); });
    connect(Command3[DemoStep], &QToolButton::clicked, this, [this] {
        demoPlay(false);
        demoStep();
    });
    connect(Command3[DemoStop], &QToolButton::clicked, this, &frmgraph::demoStop);
    connect(mnupopderiv, &QAction::triggered, this, &frmgraph::mnupopderiv_Click);
    connect(mnupopprim, &QAction::triggered, this, &frmgraph::mnupopprim_Click);
    connect(mnuderivative, &QAction::triggered, this, &frmgraph::mnupopderiv_Click);
    connect(mnuprimitive, &QAction::triggered, this, &frmgraph::mnupopprim_Click);
    connect(mnuprint, &QAction::triggered, this, &frmgraph::mnuprint_Click);
    connect(Picture1, &PlotWidget::leftButtonPressed, this, &frmgraph::Picture1_LeftButtonDown);
    connect(Picture1, &PlotWidget::doubleClicked, this, &frmgraph::Picture1_DblClick);
    // A dropped label shows π where its text has the character that stands for it.
    connect(Picture1, &PlotWidget::textDropped, this, [this](const QString& text, QPointF at) {
        addPlotLabel(1, QString(text).replace(eval::kPiChar, QChar(0x03C0)), at);
    });
    connect(Picture1, &PlotWidget::formulaDropped, this,
            [this](const QString& formula, QPointF at) { addPlotPicture(formula, at); });
    connect(imgcombfunc, &QComboBox::editTextChanged, this, &frmgraph::showFormulaObject);
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

void frmgraph::createKeyboardShortcuts()
{
    auto shortcut = [this](QKeyCombination keys, auto&& action) {
        auto* s = new QShortcut(QKeySequence(keys), this);
        connect(s, &QShortcut::activated, this, action);
    };
    shortcut(Qt::ALT | Qt::Key_F, [this] { imgcombfunc->setFocus(); });
    shortcut(Qt::ALT | Qt::Key_X, [this] { Text4[0]->setFocus(); });
    shortcut(Qt::ALT | Qt::Key_T, [this] { Text2->setFocus(); });
    shortcut(Qt::ALT | Qt::Key_I, [this] {
        if (Check1->isEnabled())
            Check1_Click();
    });
    shortcut(Qt::ALT | Qt::Key_U, [this] { checkBoxClicked(); });
    shortcut(Qt::ALT | Qt::Key_Q, [this] { editFormulaObject(); });
    // The arrow keys step the trace (text boxes keep them for their caret).
    shortcut(Qt::Key_Left, [this] { traceStep(-1); });
    shortcut(Qt::Key_Right, [this] { traceStep(1); });
    // The plot area is resized from its lower right corner.
    const int step = 10;
    shortcut(Qt::SHIFT | Qt::Key_Left, [this] { m_plotFrame->resizePlotBy(-step, 0); });
    shortcut(Qt::SHIFT | Qt::Key_Right, [this] { m_plotFrame->resizePlotBy(step, 0); });
    shortcut(Qt::SHIFT | Qt::Key_Up, [this] { m_plotFrame->resizePlotBy(0, -step); });
    shortcut(Qt::SHIFT | Qt::Key_Down, [this] { m_plotFrame->resizePlotBy(0, step); });
}

void frmgraph::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    // A screen of another pixel density needs the picture drawn again at its density.
    if (windowHandle() && !m_screenConnection)
        m_screenConnection = connect(windowHandle(), &QWindow::screenChanged, this,
                                     &frmgraph::frmPicture1_Resize);
}

void frmgraph::frmPicture1_Resize()
{
    // The timer must not tick while the picture is rebuilt; a playing trace goes on after.
    m_timer->stop();
    QImage& image = Picture1->image();
    const QSize pixels = Picture1->devicePixelSize();
    if (image.size() != pixels) {
        image = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(Picture1->devicePixelRatioF());
    }
    plot::frmPicture1_Resize(m_state, image, redrawOptions(),
                             [this](const QString& text) { m_prompter.message(text); });
    lblGrip->move(Picture1->width() - lblGrip->width(), Picture1->height() - lblGrip->height());
    placeLabels();
    ++m_redraws;
    Picture1->update();
    if (m_state.trace.on)
        showTraceReadout();
    if (m_tracePlaying || m_demo.playing)
        m_timer->start();
}

plot::RedrawOptions frmgraph::redrawOptions() const
{
    plot::RedrawOptions options;
    options.grid = Check2->isChecked();
    options.arrows = Check3->isChecked();
    options.tickLabels = Check4->isChecked();
    options.exactTrig = Check1->isChecked();
    options.fractionForm = mnupop22->isChecked();
    options.font = Picture1->font();
    return options;
}

void frmgraph::imgcombfunc_KeyPress(int keyCode)
{
    // A label the box refused names no variable: nothing is drawn until it is mended.
    if (keyCode == model::kEnterKey && !labelIsValid(Text5->text())) {
        Text5_Validate();
        return;
    }
    const bool viewChanged = keyCode == model::kEnterKey && applyRangeRows();
    const model::AddResult result =
        model::addFunction(m_state, m_prompter, imgcombfunc->currentText(), Text5->text(), keyCode);
    if (result == model::AddResult::Added)
        showFunctionItems();
    const bool drawn = result == model::AddResult::Added || result == model::AddResult::Duplicate;
    // The drawn text stays for editing, selected so that typing starts the next function.
    if (drawn)
        imgcombfunc->lineEdit()->selectAll();
    if (drawn || viewChanged)
        frmPicture1_Resize();
}

void frmgraph::showFunctionItems()
{
    std::vector<QColor> colors;
    for (const model::FunctionItem& item : m_state.functionItems) {
        const int k = model::findGraphByText(m_state, item.text);
        colors.push_back(plot::colorFromValue(k >= 0 ? m_state.graphs[k].color : m_state.functionColor));
    }
    imgcombfunc->setItems(m_state.functionItems, colors);
}

void frmgraph::focusChanged(QWidget* now)
{
    // Any other text box of the window becomes the target too, one the keys do not type in.
    if (qobject_cast<QLineEdit*>(now) && isAncestorOf(now))
        m_activeTarget = now;
    for (QWidget* w = now; w; w = w->parentWidget()) {
        const bool target = w == imgcombfunc || w == Text2 ||
                            std::find(Text4.begin(), Text4.end(), w) != Text4.end() ||
                            std::find(fracinput.begin(), fracinput.end(), w) != fracinput.end();
        if (target) {
            m_activeTarget = w;
            return;
        }
        if (w == this)
            return;
    }
}

void frmgraph::cmdtoken_Click(int index)
{
    QLineEdit* box = imgcombfunc->lineEdit();
    auto appendTo = [](QLineEdit* edit, const QString& text) {
        edit->setText(edit->text() + text);
        edit->setCursorPosition(int(edit->text().size()));
        edit->setFocus();
    };
    if (index == kClearToken) {
        box->clear();
        box->setFocus();
        return;
    }
    if (index == kPiToken) {
        if (m_activeTarget == imgcombfunc)
            appendTo(box, QString(eval::kPiChar));
        else if (m_activeTarget == Text2)
            appendTo(Text2, QString(eval::kPiChar));
        for (PiLineEdit* range : Text4)
            if (m_activeTarget == range && !range->storedText().endsWith(QLatin1Char('p')))
                range->append(QStringLiteral("p"));
        for (FractionInput* fraction : fracinput) {
            if (m_activeTarget != fraction)
                continue;
            PiLineEdit* field = fraction->field(fraction->activeField() == FractionInput::Whole
                                                    ? FractionInput::Whole
                                                    : FractionInput::Numerator);
            if (!field->storedText().endsWith(QLatin1Char('p')))
                field->append(QStringLiteral("p"));
        }
        return;
    }
    if (m_activeTarget != imgcombfunc)
        return;
    const QString text = index == kVariableToken ? cmdtoken[kVariableToken]->text()
                                                 : QLatin1String(kTokens[index].inserted);
    appendTo(box, text);
}

bool frmgraph::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == Text5 && event->type() == QEvent::FocusOut)
        Text5_Validate();
    if (watched == OLE1 && event->type() == QEvent::MouseButtonPress && !m_formulaObjectText.isEmpty()) {
        auto* drag = new QDrag(OLE1);
        auto* data = new QMimeData;
        data->setData(PlotWidget::formulaMimeType(), m_formulaObjectText.toUtf8());
        drag->setMimeData(data);
        drag->setPixmap(OLE1->pixmap());
        drag->exec(Qt::CopyAction);
        return true;
    }
    if (watched == lblGrip && (event->type() == QEvent::MouseButtonPress ||
                               event->type() == QEvent::MouseMove)) {
        // The grip resizes the plot from its lower right corner.
        const auto* mouse = static_cast<QMouseEvent*>(event);
        const QPoint global = mouse->globalPosition().toPoint();
        if (event->type() == QEvent::MouseMove && (mouse->buttons() & Qt::LeftButton)) {
            const QPoint delta = global - m_gripFrom;
            m_plotFrame->resizePlotBy(delta.x(), delta.y());
        }
        m_gripFrom = global;
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

bool frmgraph::labelIsValid(const QString& text)
{
    static const QRegularExpression label(QStringLiteral("^([a-z]\\([a-z]\\)|[a-z])$"));
    return label.match(text).hasMatch();
}

void frmgraph::Text5_Validate()
{
    if (!labelIsValid(Text5->text())) {
        showStatus(LoadResString(2027).arg(Text5->text()));
        // The box keeps the focus until it holds a label.
        QTimer::singleShot(0, Text5, [this] { Text5->setFocus(); });
        return;
    }
    m_acceptedLabel = Text5->text();
    cmdtoken[kVariableToken]->setText(model::labelVariable(m_acceptedLabel));
    showStatus(QString());
}

void frmgraph::loadRows(const model::RangePreset& x, const model::RangePreset& y)
{
    plot::FillRangeRow(Text4, x);
    plot::FillRangeRow(Text6, y);
}

void frmgraph::set_triginputcontrols(bool fractions)
{
    for (int i = 0; i < 3; ++i) {
        Text4[i]->setVisible(!fractions);
        fracinput[i]->setVisible(fractions);
    }
    if (fractions) {
        fracinput[0]->setTexts(QStringLiteral("-3p"), QStringLiteral("0"), QStringLiteral("1"));
        fracinput[1]->setTexts(QStringLiteral("3p"), QStringLiteral("0"), QStringLiteral("1"));
        fracinput[2]->setTexts(QStringLiteral("0"), QStringLiteral("p"), QStringLiteral("2"));
    }
}

bool frmgraph::applyRangeRows()
{
    plot::RangeRow x;
    plot::RangeRow y;
    const bool fractions = fracinput[0]->isVisibleTo(this);
    for (int i = 0; i < 4; ++i) {
        x[i] = Text4[i]->storedText();
        y[i] = Text6[i]->storedText();
    }
    for (int i = 0; fractions && i < 3; ++i) {
        const std::optional<double> value = fracinput[i]->value();
        x[i] = value ? eval::roundTripText(*value) : fracinput[i]->writtenText();
    }
    const plot::ViewReading reading = plot::readViewWindow(x, y);
    if (!reading.view) {
        showStatus(reading.problem);
        return false;
    }
    showStatus(QString());
    if (*reading.view == m_state.view)
        return false;
    m_state.view = *reading.view;
    m_state.documentChanged = true;
    return true;
}

std::array<QString, 4> frmgraph::rowTexts(const std::array<PiLineEdit*, 4>& row) const
{
    std::array<QString, 4> texts;
    for (int i = 0; i < 4; ++i)
        texts[i] = row[i]->storedText();
    return texts;
}

void frmgraph::mnuzoomin_Click()
{
    const plot::ZoomBox box = plot::initialZoomBox(m_state.view);
    const plot::PlotScale scale = plot::SetPlotScale(QSizeF(Picture1->size()), m_state.view);
    const QPointF topLeft = scale.toPixel(box.left, box.top);
    const QPointF bottomRight = scale.toPixel(box.left + box.width, box.top - box.height);
    piczoombox->setGeometry(QRectF(topLeft, bottomRight).toRect());
    piczoombox->show();
    piczoombox->raise();
    piczoombox->setFocus();
    frmPicture1_Resize();
}

int frmgraph::zoom(int mode, bool toBeginning)
{
    if (mode == 0) {
        // The box is read back in world units: its top-left corner and its size.
        const plot::PlotScale scale = plot::SetPlotScale(QSizeF(Picture1->size()), m_state.view);
        const QRectF r = piczoombox->geometry();
        const QPointF topLeft = scale.toWorld(r.topLeft());
        const plot::ZoomBox box{topLeft.x(), topLeft.y(), r.width() * scale.unitsPerPixelX(),
                                r.height() * scale.unitsPerPixelY()};
        std::array<QString, 4> x = rowTexts(Text4);
        std::array<QString, 4> y = rowTexts(Text6);
        plot::zoomIn(m_state, box, x, y);
        set_triginputcontrols(false); // the new range is written in decimals
        loadRows(x, y);
        piczoombox->hide();
        m_state.documentChanged = true;
        applyRangeRows();
        frmPicture1_Resize();
    } else if (mode == 1) {
        std::array<QString, 4> x = rowTexts(Text4);
        std::array<QString, 4> y = rowTexts(Text6);
        if (plot::zoomOut(m_state, toBeginning, x, y)) {
            set_triginputcontrols(false);
            loadRows(x, y);
            m_state.documentChanged = true;
            frmPicture1_Resize();
        }
    } else {
        piczoombox->hide();
    }
    return m_state.zoomCount;
}

void frmgraph::wheelZoom(double steps, QPointF at)
{
    piczoombox->hide();
    const plot::PlotScale scale = plot::SetPlotScale(QSizeF(Picture1->size()), m_state.view);
    const QPointF world = scale.toWorld(at);
    // Each turn is a step of the history, so that stepwise zoom-out undoes it.
    m_state.zoomHistory.resize(std::size_t(m_state.zoomCount) + 1);
    m_state.zoomHistory.back() = m_state.view;
    ++m_state.zoomCount;
    const model::ViewWindow view = plot::scaledView(m_state.view, std::pow(0.8, steps), world.x(), world.y());
    auto text = [](double v) { return eval::numberText(v, QLocale(), 7); };
    std::array<QString, 4> x = rowTexts(Text4);
    std::array<QString, 4> y = rowTexts(Text6);
    x[0] = text(view.XMin);
    x[1] = text(view.XMax);
    x[2] = text(view.XStep);
    y[0] = text(view.YMin);
    y[1] = text(view.YMax);
    y[2] = text(view.YStep);
    set_triginputcontrols(false);
    loadRows(x, y);
    m_state.documentChanged = true;
    applyRangeRows();
    frmPicture1_Resize();
}

quint32 frmgraph::askColor(bool axisTitle)
{
    if (axisTitle)
        m_colorTitle = LoadResString(461);
    if (const std::optional<quint32> chosen = m_prompter.chooseColor(m_colorTitle, m_dialogColor))
        m_dialogColor = *chosen;
    return m_dialogColor;
}

void frmgraph::recolorCurves()
{
    for (model::GraphEntry& entry : m_state.graphs)
        entry.color = m_state.functionColor;
    showFunctionItems();
}

void frmgraph::mnucolgrid_Click()
{
    m_state.gridColor = askColor(false);
    frmPicture1_Resize();
}

void frmgraph::mnucolaxis_Click()
{
    m_state.axisColor = askColor(true);
    frmPicture1_Resize();
}

void frmgraph::mnucolfunc_Click()
{
    // The axes follow the function colour, and so does every curve drawn so far.
    m_state.functionColor = askColor(true);
    m_state.axisColor = m_state.functionColor;
    recolorCurves();
    frmPicture1_Resize();
}

void frmgraph::mnucolwind_Click()
{
    QPalette background = palette();
    background.setColor(QPalette::Window, plot::colorFromValue(askColor(true)));
    setPalette(background);
}

void frmgraph::mnucolfill_Click()
{
    m_state.fillColor = askColor(true);
    frmPicture1_Resize();
}

void frmgraph::Picture1_RightButtonUp(QPointF at)
{
    const plot::PlotScale scale = plot::SetPlotScale(QSizeF(Picture1->size()), m_state.view);
    m_fillAnchor = scale.toWorld(at);
    m_fillAnchorSet = true;
    mnufill->setEnabled(true);
    // Near a curve, the click is about that function: it is picked in the function box.
    const int curve = plot::nearestCurve(m_state, QSizeF(Picture1->size()), at);
    if (curve >= 0) {
        imgcombfunc->setEditText(m_state.graphs[std::size_t(curve)].text);
        imgcombfunc->setCurrentIndex(model::findItemByText(m_state, imgcombfunc->currentText()) - 1);
    }
    if (isVisible())
        (curve >= 0 ? mnupop : mnutool)->popup(Picture1->mapToGlobal(at.toPoint()));
}

void frmgraph::mnufill_Click()
{
    if (m_state.fills.size() >= std::size_t(std::numeric_limits<qint16>::max())) {
        m_prompter.message(LoadResString(2016));
        return;
    }
    m_state.fills.push_back({m_fillAnchor.x(), m_fillAnchor.y(), m_state.fillColor});
    recolorCurves();
    m_state.documentChanged = true;
    frmPicture1_Resize();
}

void frmgraph::mnufontsize_Click()
{
    const QString prompt = LoadResString(468) + LoadResString(2045);
    const QString outOfRange = LoadResString(443) + QStringLiteral("max") + QStringLiteral("5") +
                               QStringLiteral("min") + QStringLiteral("10");
    for (;;) {
        const std::optional<QString> answer =
            m_prompter.inputText(prompt, QString::number(Picture1->font().pointSize()));
        if (!answer || answer->trimmed().isEmpty())
            return;
        const bool numeric =
            !answer->contains(QLatin1Char('p')) && plot::readRangeNumber(*answer).has_value();
        const double size = numeric ? plot::readRangeNumber(*answer).value_or(0) : 0;
        const QString problem = !numeric ? prompt : (size < 5 || size > 10) ? outOfRange : QString();
        if (!problem.isEmpty()) {
            if (m_prompter.ask(problem, model::Prompter::Buttons::RetryCancel) ==
                model::Prompter::Button::Retry)
                continue;
            return;
        }
        QFont font = Picture1->font();
        font.setPointSize(int(eval::roundHalfEven(size)));
        Picture1->setFont(font);
        frmPicture1_Resize();
        return;
    }
}

frmtangent* frmgraph::tangentWindow()
{
    if (!m_tangent) {
        m_tangent = new frmtangent(m_state, m_prompter, this);
        connect(m_tangent, &frmtangent::guideLinesChanged, this, &frmgraph::frmPicture1_Resize);
        // Start asks for the activation handler; it runs at once as well, so that the
        // demonstration starts where no window manager hands the activation back.
        connect(m_tangent, &frmtangent::startRequested, this, &frmgraph::Form_Activate);
        connect(m_tangent, &frmtangent::pauseRequested, this, [this] { demoPlay(false); });
        connect(m_tangent, &frmtangent::stepRequested, this, [this] {
            demoPlay(false);
            demoStep();
        });
        connect(m_tangent, &frmtangent::stopRequested, this, &frmgraph::demoStop);
    }
    return m_tangent;
}

void frmgraph::openGuideLines(int mode)
{
    frmtangent* window = tangentWindow();
    window->currentusage(mode);
    window->setValues(mode == 1 ? m_state.verticalLines : m_state.horizontalLines);
    window->show();
    window->raise();
    window->activateWindow();
}

void frmgraph::openDemonstration()
{
    const QString text = imgcombfunc->currentText();
    if (text.isEmpty() || model::findGraphByText(m_state, text) < 0) {
        m_prompter.message(QStringLiteral("Ingen aktiv funktion"));
        return;
    }
    frmtangent* window = tangentWindow();
    if (window->usage() != 0)
        window->setValues({});
    window->currentusage(0);
    window->setFunction(text);
    window->show();
    window->raise();
    window->activateWindow();
}

void frmgraph::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        Form_Activate();
}

int frmgraph::demoEntry(qint32 tag) const
{
    for (std::size_t k = 0; k < m_state.graphs.size(); ++k)
        if (m_state.graphs[k].tag == tag)
            return int(k);
    return -1;
}

void frmgraph::removeDemonstrationCurves()
{
    for (int k = int(m_state.graphs.size()) - 1; k >= 0; --k)
        if (plot::isPointByPoint(m_state.graphs[std::size_t(k)]))
            model::removeGraphAt(m_state, k);
}

void frmgraph::Form_Activate()
{
    if (!m_tangent || m_tangent->requestFlag != 1)
        return;
    // The request is answered once, whatever comes of it.
    m_tangent->requestFlag = 0;
    const int source = model::findGraphByText(m_state, m_tangent->function());
    if (source < 0 || plot::isPointByPoint(m_state.graphs[std::size_t(source)])) {
        m_prompter.message(QStringLiteral("Ingen aktiv funktion"));
        return;
    }
    const model::GraphEntry sourceEntry = m_state.graphs[std::size_t(source)];
    removeDemonstrationCurves();
    const std::size_t added = m_tangent->drawDerivative() ? 2 : 1;
    if (m_state.graphs.size() + added > std::size_t(std::numeric_limits<qint16>::max())) {
        m_prompter.message(LoadResString(4025));
        return;
    }
    m_tracePlaying = false;
    if (mnutrace->isChecked())
        mnutrace->setChecked(false);

    for (QLabel* panel : statusPanels)
        panel->clear();
    statusPanels[2]->setText(QStringLiteral("Derivata/tangent"));
    m_demoControls->show();

    // The demonstrated curve, sampled once over the view: its points are its data.
    const model::ViewWindow& view = m_state.view;
    const QString variable = m_state.listVariable.isEmpty() ? QStringLiteral("x") : m_state.listVariable;
    const QString label = QStringLiteral("f(%1)").arg(variable);
    const auto report = [this](const QString& m) { m_prompter.message(m); };
    eval::SampledCurve curve{sourceEntry.text, {}};
    if (m_state.sampleStep > 0 && (view.XMax - view.XMin) / m_state.sampleStep <= 1e6) {
        eval::SizeCurvePoints(view.XMin, view.XMax, curve, m_state.sampleStep);
        // Slots the sampling does not reach stay undefined and are dropped below.
        const double nan = std::numeric_limits<double>::quiet_NaN();
        std::fill(curve.points.begin(), curve.points.end(), eval::PointD{nan, nan});
        eval::SampleCurve(m_state.evaluator, view.XMin, view.XMax, label, curve,
                          m_state.sampleStep, report);
    }
    model::GraphEntry demo;
    demo.tag = plot::kDemoCurveTag;
    demo.expression = sourceEntry.expression;
    demo.text = sourceEntry.text;
    demo.color = m_state.functionColor;
    for (const eval::PointD& p : curve.points)
        if (std::isfinite(p.x) && std::isfinite(p.y))
            demo.points.push_back(p);
    m_state.graphs.push_back(demo);
    if (m_tangent->drawDerivative()) {
        model::GraphEntry derivative;
        derivative.tag = plot::kDemoDerivativeTag;
        derivative.text = QStringLiteral("(%1)'").arg(sourceEntry.text);
        derivative.color = m_state.functionColor;
        m_state.graphs.push_back(derivative);
    }
    m_state.graphCount = qint16(m_state.graphs.size());
    m_state.documentChanged = true;

    m_demo = Demo{};
    m_demo.running = true;
    m_demo.xs = m_tangent->plannedXs();
    m_demo.fromList = !m_tangent->values().empty();
    demoStep();
    demoPlay(true);
}

void frmgraph::timerTick()
{
    if (m_demo.playing)
        demoStep();
    else
        traceStep(1);
}

void frmgraph::demoPlay(bool playing)
{
    m_demo.playing = playing && m_demo.running && m_demo.next < m_demo.xs.size();
    if (m_demo.playing) {
        m_tracePlaying = false;
        m_timer->start();
    } else if (!m_tracePlaying) {
        m_timer->stop();
    }
}

namespace {

// The slope of a prepared expression at x by a central difference: far closer to the
// derivative than the tangent's forward difference, so the derivative's graph is true.
double slopeAt(eval::ExpressionEvaluator& evaluator, const QString& variable,
               const QString& expression, double x)
{
    const double h = 1e-5 * std::max(1.0, std::abs(x));
    const int id = evaluator.DefineVariable(variable);
    const int e = evaluator.SetExpression(expression);
    double slope = std::numeric_limits<double>::quiet_NaN();
    if (!evaluator.HasError()) {
        evaluator.SetVariable(id, x + h);
        const double right = evaluator.Evaluate(e);
        evaluator.SetVariable(id, x - h);
        const double left = evaluator.Evaluate(e);
        slope = (right - left) / (2 * h);
    }
    evaluator.Reset();
    return slope;
}

} // namespace

void frmgraph::demoStep()
{
    if (!m_demo.running)
        return;
    const int curve = demoEntry(plot::kDemoCurveTag);
    if (curve < 0 || m_demo.next >= m_demo.xs.size()) {
        // At the end the tangent and the derivative's graph stay where they are.
        demoPlay(false);
        return;
    }
    const double x = m_demo.xs[m_demo.next++];
    const QString variable = m_state.listVariable.isEmpty() ? QStringLiteral("x") : m_state.listVariable;
    const QString expression = m_state.graphs[std::size_t(curve)].expression;
    const double slope = slopeAt(m_state.evaluator, variable, expression, x);

    model::GraphMark mark;
    mark.x = x;
    m_state.graphs[std::size_t(curve)].marks = {mark};

    const int derivative = demoEntry(plot::kDemoDerivativeTag);
    if (derivative >= 0) {
        // Along a range the graph grows from the last x to this one; a listed x that is
        // not next to the last one gets a short piece of its own.
        std::vector<eval::PointD>& points = m_state.graphs[std::size_t(derivative)].points;
        const double pixel = (m_state.view.XMax - m_state.view.XMin) / 1000;
        double a = x - 5 * pixel;
        double b = x + 5 * pixel;
        if (m_demo.hasLast && !m_demo.fromList)
            a = std::min(m_demo.lastX, x), b = std::max(m_demo.lastX, x);
        const double spacing = m_state.sampleStep > 0 ? std::min(pixel, m_state.sampleStep) : pixel;
        for (double t = a; t < b && spacing > 0; t += spacing) {
            const double s = slopeAt(m_state.evaluator, variable, expression, t);
            if (std::isfinite(s))
                points.push_back({t, s});
        }
        if (std::isfinite(slope))
            points.push_back({x, slope});
    }
    m_demo.hasLast = true;
    m_demo.lastX = x;

    frmPicture1_Resize();
    auto text = [](double v) { return eval::numberText(eval::roundHalfEven(v, 4)); };
    statusPanels[0]->setText(m_state.graphs[std::size_t(curve)].text);
    statusPanels[1]->setText(variable + QStringLiteral(" = ") + text(x));
    statusPanels[3]->setText(std::isfinite(slope)
                                 ? QStringLiteral("f'(%1) = %2").arg(variable, text(slope))
                                 : QStringLiteral("f'(%1) = ?").arg(variable));
    if (m_demo.next >= m_demo.xs.size())
        demoPlay(false);
}

void frmgraph::demoStop()
{
    if (!m_demo.running)
        return;
    m_demo = Demo{};
    demoPlay(false);
    // The demonstrated curve and its tangent go; the derivative's graph stays drawn.
    for (int k = int(m_state.graphs.size()) - 1; k >= 0; --k)
        if (m_state.graphs[std::size_t(k)].tag == plot::kDemoCurveTag)
            model::removeGraphAt(m_state, k);
    m_state.graphCount = qint16(m_state.graphs.size());
    m_demoControls->hide();
    for (QLabel* panel : statusPanels)
        panel->clear();
    frmPicture1_Resize();
}

void frmgraph::showStatus(const QString& text)
{
    statusPanels[4]->setText(text);
}

void frmgraph::checkBoxClicked()
{
    if (m_state.settingUp)
        return;
    frmPicture1_Resize();
}

void frmgraph::Option1_Click(int index)
{
    if (m_state.settingUp)
        return;
    using model::AngleUnit;
    const AngleUnit from = m_state.angleUnit;
    const AngleUnit to = index == 0 ? AngleUnit::Degrees
                         : index == 1 ? AngleUnit::Radians
                                      : AngleUnit::Gradians;
    m_state.angleUnit = to;
    if (to == AngleUnit::Radians) {
        Check1->setEnabled(true);
        loadRows(m_state.presetRadiansX, m_state.presetRadiansY);
    } else {
        if (Check1->isChecked()) {
            Check1->setChecked(false);
            set_triginputcontrols(false);
        }
        Check1->setEnabled(false);
        if (to == AngleUnit::Degrees)
            loadRows(m_state.presetDegreesX, m_state.presetDegreesY);
        else
            loadRows(m_state.presetGradiansX, m_state.presetGradiansY);
    }
    if (plot::convertMarks(m_state, from, to))
        m_state.documentChanged = true;
    applyRangeRows();
    frmPicture1_Resize();
}

void frmgraph::Check1_Click()
{
    if (m_state.settingUp)
        return;
    if (Check1->isChecked()) {
        if (mnupop22->isChecked())
            set_triginputcontrols(true);
        else
            loadRows(m_state.presetRadiansX, m_state.presetRadiansY);
        // Offer the number form right where the box was ticked.
        if (isVisible())
            mnupop2->popup(Check1->mapToGlobal(QPoint(0, Check1->height())));
    } else {
        set_triginputcontrols(false);
        loadRows(m_state.presetDecimalX, m_state.presetDecimalY);
    }
    applyRangeRows();
    frmPicture1_Resize();
}

void frmgraph::mnupop21_Click()
{
    mnupop21->setChecked(true);
    if (Check1->isChecked()) {
        set_triginputcontrols(false);
        loadRows(m_state.presetRadiansX, m_state.presetRadiansY);
        applyRangeRows();
    }
    frmPicture1_Resize();
}

void frmgraph::mnupop22_Click()
{
    mnupop22->setChecked(true);
    const QStringList wholes{"-3p", "-2p", "-p", "-0", "0", "p", "2p", "3p"};
    const QStringList numerators{"0", "p", "2p", "3p", "5p"};
    const QStringList denominators{"1", "2", "3", "4", "6"};
    for (FractionInput* fraction : fracinput)
        fraction->setAllowedValues(wholes, numerators, denominators);
    if (Check1->isChecked()) {
        set_triginputcontrols(true);
        applyRangeRows();
    }
    frmPicture1_Resize();
}

bool frmgraph::askSaveChanges()
{
    if (!m_state.documentChanged)
        return true;
    switch (m_prompter.ask(LoadResString(620), model::Prompter::Buttons::YesNoCancel)) {
    case model::Prompter::Button::Cancel:
        return false;
    case model::Prompter::Button::Yes:
        return mnusaveas_Click();
    default:
        return true;
    }
}

void frmgraph::mnunew_Click()
{
    if (!askSaveChanges())
        return;
    mnutrace->setChecked(false);
    mnutangent->setChecked(false);
    demoStop();
    for (auto* array : {&m_textLabels1, &m_textLabels2, &m_formulaObjects}) {
        for (const QPointer<PlotLabel>& label : *array)
            delete label.data();
        array->clear();
    }
    model::clearDrawing(m_state); // also raises the set-up flag
    imgcombfunc->setItems({}, {});
    imgcombfunc->setEditText(QString());

    set_triginputcontrols(false);
    loadRows(m_state.presetDecimalX, m_state.presetDecimalY);
    applyRangeRows();
    Check1->setChecked(false);
    Check1->setEnabled(true);
    Option1[1]->setChecked(true);
    Check2->setChecked(true);
    Check3->setChecked(true);
    Check4->setChecked(true);
    m_plotFrame->fillFrame();
    zoom(1, true);
    m_state.documentChanged = false;
    frmPicture1_Resize();
}

void frmgraph::mnupop1_Click()
{
    const QString text = imgcombfunc->currentText();
    if (m_state.trace.on && model::findGraphByText(m_state, text) == m_state.trace.entry)
        mnutrace->setChecked(false);
    const int selected = imgcombfunc->currentIndex();
    const int position = selected >= 0 && imgcombfunc->itemText(selected) == text
                             ? selected + 1
                             : model::findItemByText(m_state, text);
    // The traced curve keeps the trace when an entry before it goes and its index moves.
    const QString traced = m_state.trace.on ? m_state.graphs[std::size_t(m_state.trace.entry)].text
                                            : QString();
    if (!model::deleteFunctionItem(m_state, position))
        return;
    if (m_state.trace.on)
        m_state.trace.entry = model::findGraphByText(m_state, traced);
    showFunctionItems();
    imgcombfunc->setEditText(QString());
    frmPicture1_Resize();
    cmdtoken_Click(kClearToken);
}

void frmgraph::openSettings()
{
    if (!m_settings) {
        m_settings = new frmsettings(m_state, this);
        connect(m_settings, &frmsettings::closedWithRedraw, this, &frmgraph::frmPicture1_Resize);
    }
    m_settings->show();
    m_settings->raise();
    m_settings->activateWindow();
}

void frmgraph::beginCapture()
{
    m_plotFontDuringCapture = Picture1->font();
    QPalette grip = lblGrip->palette();
    grip.setColor(QPalette::Window, redrawOptions().background);
    lblGrip->setPalette(grip);
    Picture1->setFont(m_labelFont);
}

void frmgraph::burnLabels()
{
    auto texts = [](const std::vector<QPointer<PlotLabel>>& labels) {
        std::vector<std::optional<output::OverlayText>> list;
        for (const QPointer<PlotLabel>& label : labels) {
            if (label)
                list.push_back(output::OverlayText{label->geometry(), label->text()});
            else
                list.emplace_back();
        }
        return list;
    };
    std::vector<std::optional<output::OverlayPicture>> pictures;
    for (const QPointer<PlotLabel>& object : m_formulaObjects) {
        if (object)
            pictures.push_back(output::OverlayPicture{object->geometry(), object->pixmap().toImage()});
        else
            pictures.emplace_back();
    }
    output::burnOverlays(Picture1->image(), pictures, texts(m_textLabels1), texts(m_textLabels2),
                         m_labelFont);
}

void frmgraph::endCapture()
{
    Picture1->setFont(m_plotFontDuringCapture);
    // Black after every export, whatever the grip had before.
    QPalette grip = lblGrip->palette();
    grip.setColor(QPalette::Window, Qt::black);
    lblGrip->setPalette(grip);
    frmPicture1_Resize();
}

bool frmgraph::failed(bool ok, const QString& reason)
{
    if (!ok)
        m_prompter.message(reason);
    return !ok;
}

void frmgraph::mnutangent_Click(bool on)
{
    Picture1->setCursor(on ? Qt::CrossCursor : Qt::ArrowCursor);
    if (on)
        showStatus(LoadResString(2064));
}

void frmgraph::addTangentAt(QPointF at)
{
    int curve = plot::nearestCurve(m_state, QSizeF(Picture1->size()), at, 12);
    if (curve < 0)
        curve = model::findGraphByText(m_state, imgcombfunc->currentText());
    if (curve < 0)
        return;
    const double x = plot::SetPlotScale(QSizeF(Picture1->size()), m_state.view).toWorld(at).x();
    model::GraphMark mark;
    mark.x = x;
    m_state.graphs[std::size_t(curve)].marks.push_back(mark);
    m_state.documentChanged = true;
    frmPicture1_Resize();
    showStatus(m_state.graphs[std::size_t(curve)].marks.back().line);
}

void frmgraph::removeTangents()
{
    const int k = model::findGraphByText(m_state, imgcombfunc->currentText());
    if (k < 0 || m_state.graphs[std::size_t(k)].marks.empty())
        return;
    m_state.graphs[std::size_t(k)].marks.clear();
    m_state.documentChanged = true;
    frmPicture1_Resize();
}

void frmgraph::mnutrace_Click(bool on)
{
    model::AppState::Trace& trace = m_state.trace;
    if (on) {
        int k = model::findGraphByText(m_state, imgcombfunc->currentText());
        if (k < 0 && !m_state.graphs.empty())
            k = 0;
        if (k < 0) {
            const QSignalBlocker blocker(mnutrace);
            mnutrace->setChecked(false);
            showStatus(QStringLiteral("Ingen aktiv funktion"));
            return;
        }
        trace = {true, k, m_state.view.XMin, 0, false};
    } else {
        trace.on = false;
        m_tracePlaying = false;
        for (QLabel* panel : statusPanels)
            panel->clear();
    }
    m_traceControls->setVisible(on);
    frmPicture1_Resize();
}

bool frmgraph::tracePlaying() const
{
    return m_tracePlaying;
}

void frmgraph::tracePlay(bool playing)
{
    m_tracePlaying = playing && m_state.trace.on;
    if (m_tracePlaying)
        m_demo.playing = false;
    if (m_tracePlaying)
        m_timer->start();
    else
        m_timer->stop();
}

void frmgraph::traceStep(int direction)
{
    if (!m_state.trace.on)
        return;
    const double step = (m_state.view.XMax - m_state.view.XMin) / 200;
    const double next = m_state.trace.x + direction * step;
    // Playing stops at the end of the view.
    if (next > m_state.view.XMax || next < m_state.view.XMin) {
        tracePlay(false);
        return;
    }
    traceTo(next);
}

void frmgraph::traceTo(double x)
{
    m_state.trace.x = x;
    frmPicture1_Resize();
}

void frmgraph::showTraceReadout()
{
    const model::AppState::Trace& trace = m_state.trace;
    auto text = [](double v) { return eval::numberText(eval::roundHalfEven(v, 7)); };
    statusPanels[0]->setText(QStringLiteral("TRACE ") + m_state.graphs[std::size_t(trace.entry)].text);
    statusPanels[1]->setText(trace.found ? QStringLiteral("X = ") + text(trace.x) : QString());
    statusPanels[2]->setText(trace.found ? QStringLiteral("Y = ") + text(trace.y) : QString());
}

void frmgraph::mnupopderiv_Click()
{
    symbolicCommand(true);
}

void frmgraph::mnupopprim_Click()
{
    symbolicCommand(false);
}

void frmgraph::symbolicCommand(bool derivative)
{
    const QString text = imgcombfunc->currentText();
    if (text.isEmpty())
        return;
    const int source = model::findGraphByText(m_state, text);
    const QString variable = model::labelVariable(Text5->text());
    const auto report = [this](const QString& m) { m_prompter.message(m); };
    // The window stays responsive while the answer is worked out, with a busy pointer.
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const QString answer = derivative
        ? eval::SymbolicDerivative(text, variable, 1, report, m_state.symbolicOptions)
        : eval::SymbolicPrimitive(text, variable, report, m_state.symbolicOptions);
    QApplication::restoreOverrideCursor();
    if (answer.isEmpty())
        return;
    imgcombfunc->setEditText(answer);
    (derivative ? m_state.pendingDerivativeOf : m_state.pendingPrimitiveOf) = std::max(source, -1);
    frmPicture1_Resize();
}

void frmgraph::mnucopy_Click()
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (failed(clipboard != nullptr, LoadResString(2050)))
        return;
    clipboard->clear();
    beginCapture();
    burnLabels();
    clipboard->setImage(Picture1->image());
    endCapture();
}

void frmgraph::mnuprint_Click()
{
    beginCapture();
    QPrinter printer;
    if (m_prompter.printerSetup(printer)) {
        burnLabels();
        QPainter painter;
        if (!failed(painter.begin(&printer), LoadResString(2051))) {
            const QImage& picture = Picture1->image();
            painter.drawImage(output::printRect(picture.deviceIndependentSize(),
                                                printer.resolution(), Picture1->logicalDpiX()),
                              picture);
            painter.end();
        }
    }
    endCapture();
}

bool frmgraph::mnusaveas_Click()
{
    beginCapture();
    const QString title = LoadResString(428).mid(1);
    const QString folder = output::graphsFolder(LoadResString(9));
    const QString fileName =
        m_prompter.saveFileName(title, folder, output::saveFilter(LoadResString(23)));
    bool saved = false;
    if (!fileName.isEmpty()) {
        burnLabels();
        QString error;
        saved = !failed(output::writePlotFile(m_state, Picture1->image(), redrawOptions(),
                                              fileName, &error),
                        error);
    }
    m_state.saveCancelled = !saved;
    if (saved)
        m_state.documentChanged = false;
    endCapture();
    return saved;
}

QMimeData* frmgraph::dragData()
{
    beginCapture();
    burnLabels();
    auto* data = new QMimeData;
    data->setImageData(Picture1->image());
    endCapture();
    return data;
}

void frmgraph::Picture1_LeftButtonDown(QPointF at)
{
    if (piczoombox->isVisible())
        return;
    if (mnutangent->isChecked()) {
        addTangentAt(at);
        return;
    }
    if (m_state.trace.on) {
        traceTo(plot::SetPlotScale(QSizeF(Picture1->size()), m_state.view).toWorld(at).x());
        return;
    }
    // The drag starts at once; only a copy of the picture leaves the program.
    auto* drag = new QDrag(this);
    drag->setMimeData(dragData());
    const QImage& picture = Picture1->image();
    drag->setPixmap(QPixmap::fromImage(picture.scaledToWidth(std::min(160, picture.width()),
                                                             Qt::SmoothTransformation)));
    drag->exec(Qt::CopyAction);
}

PlotLabel* frmgraph::placeLabel(std::vector<QPointer<PlotLabel>>& array, QPointF at)
{
    const plot::PlotScale scale = plot::SetPlotScale(QSizeF(Picture1->size()), m_state.view);
    const QPointF world = scale.toWorld(at);
    auto* label = new PlotLabel(world.x(), world.y(), Picture1);
    label->setFont(m_labelFont);
    label->move(at.toPoint());
    connect(label, &PlotLabel::moved, this, [this, label](QPoint topLeft) {
        const QPointF w = plot::SetPlotScale(QSizeF(Picture1->size()), m_state.view).toWorld(topLeft);
        label->setWorld(w.x(), w.y());
        m_state.documentChanged = true;
    });
    array.emplace_back(label);
    m_state.documentChanged = true;
    return label;
}

QLabel* frmgraph::addPlotLabel(int array, const QString& text, QPointF at)
{
    PlotLabel* label = placeLabel(array == 1 ? m_textLabels1 : m_textLabels2, at);
    label->setText(text);
    label->adjustSize();
    label->show();
    return label;
}

QLabel* frmgraph::addPlotPicture(const QString& formula, QPointF at)
{
    const QImage picture = plot::typesetFormula(formula, Text5->text(), m_labelFont,
                                                devicePixelRatioF());
    if (picture.isNull())
        return nullptr;
    PlotLabel* label = placeLabel(m_formulaObjects, at);
    label->setPixmap(QPixmap::fromImage(picture));
    label->setProperty("formula", formula);
    label->adjustSize();
    label->show();
    return label;
}

void frmgraph::placeLabels()
{
    // Labels keep their world position: a zoom or a new range moves them with the plot.
    const plot::PlotScale scale = plot::SetPlotScale(QSizeF(Picture1->size()), m_state.view);
    for (const auto* array : {&m_textLabels1, &m_textLabels2, &m_formulaObjects})
        for (const QPointer<PlotLabel>& label : *array)
            if (label)
                label->move(scale.toPixel(label->worldX(), label->worldY()).toPoint());
}

void frmgraph::Picture1_DblClick(QPointF at)
{
    const int curve = plot::nearestCurve(m_state, QSizeF(Picture1->size()), at, 6);
    if (curve < 0)
        return;
    const plot::PlotScale scale = plot::SetPlotScale(QSizeF(Picture1->size()), m_state.view);
    const eval::PointD* nearest = nullptr;
    double best = 0;
    for (const eval::PointD& p : m_state.graphs[std::size_t(curve)].points) {
        const QPointF d = scale.toPixel(p.x, p.y) - at;
        const double squared = d.x() * d.x() + d.y() * d.y();
        if (!nearest || squared < best) {
            nearest = &p;
            best = squared;
        }
    }
    auto text = [](double v) { return eval::numberText(eval::roundHalfEven(v, 4)); };
    addPlotLabel(1, QStringLiteral("(%1%2 %3)").arg(text(nearest->x), m_state.coordinateSeparator,
                                                   text(nearest->y)),
                 scale.toPixel(nearest->x, nearest->y));
}

void frmgraph::showFormulaObject()
{
    const QImage picture = plot::typesetFormula(imgcombfunc->currentText(), Text5->text(),
                                                m_labelFont, devicePixelRatioF());
    m_formulaObjectText = picture.isNull() ? QString() : imgcombfunc->currentText();
    OLE1->setPixmap(picture.isNull() ? QPixmap() : QPixmap::fromImage(picture));
}

void frmgraph::editFormulaObject()
{
    PlotLabel* object = nullptr;
    for (const QPointer<PlotLabel>& candidate : m_formulaObjects)
        if (candidate)
            object = candidate;
    const QString current = object ? object->property("formula").toString() : imgcombfunc->currentText();
    const std::optional<QString> edited = m_prompter.inputText(LoadResString(2070), current);
    if (!edited || edited->isEmpty())
        return;
    const QImage picture = plot::typesetFormula(*edited, Text5->text(), m_labelFont, devicePixelRatioF());
    if (picture.isNull()) {
        m_prompter.message(LoadResString(2071));
        return;
    }
    if (object) {
        object->setPixmap(QPixmap::fromImage(picture));
        object->setProperty("formula", *edited);
        object->adjustSize();
        m_state.documentChanged = true;
    } else {
        imgcombfunc->setEditText(*edited);
    }
}

void frmgraph::closeEvent(QCloseEvent* event)
{
    if (!askSaveChanges()) {
        event->ignore();
        return;
    }
    if (m_settings)
        m_settings->close();
    // A store that cannot be written is reported; the program closes all the same.
    QString error;
    if (!output::writeColorSettings(m_state, &error))
        m_prompter.message(error);
    event->accept();
}

} // namespace curvix::app
