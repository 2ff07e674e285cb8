#include "app/frmabout1.h"

#include "app/tool_icons.h"
#include "model/strings.h"

#include <QFileInfo>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QProcess>
#include <QPushButton>
#include <QStandardPaths>
#include <QVBoxLayout>

#ifdef Q_OS_WIN
#include <QSettings>
#endif

#ifndef CURVIX_VERSION
#error "CURVIX_VERSION must come from the build (the project's version)"
#endif

namespace curvix::app {

using model::LoadResString;

#ifdef Q_OS_WIN
std::optional<QString> GetKeyValue(const QString& hive, const QString& keyName,
                                   const QString& valueName)
{
    QSettings key(hive + QLatin1Char('\\') + keyName, QSettings::NativeFormat);
    const QVariant value = key.value(valueName);
    if (!value.isValid())
        return std::nullopt;
    const int type = value.metaType().id();
    if (type == QMetaType::Int || type == QMetaType::UInt)
        return QStringLiteral("&h") + QString::number(value.toUInt(), 16).toUpper();
    QString text = value.toString();
    if (text.endsWith(QChar(0)))
        text.chop(1);
    return text;
}

namespace {

// msinfo32 names its own path in one key; older systems name only its folder in another.
QString registeredSysInfoTool()
{
    const QString hive = QStringLiteral("HKEY_LOCAL_MACHINE");
    if (const auto path = GetKeyValue(hive, QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"),
                                      QStringLiteral("PATH")))
        return *path;
    if (const auto folder = GetKeyValue(hive, QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools Location"),
                                        QStringLiteral("MSINFO"))) {
        const QString path = *folder + QStringLiteral("\\MSINFO32.EXE");
        if (QFileInfo::exists(path))
            return path;
    }
    return {};
}

} // namespace
#endif

SysInfoSearch systemSysInfoSearch()
{
    SysInfoSearch search;
#ifdef Q_OS_WIN
    search.registered = registeredSysInfoTool;
#else
    search.candidates = {QStringLiteral("kinfocenter"), QStringLiteral("hardinfo"),
                         QStringLiteral("gnome-system-monitor")};
#endif
    search.findExecutable = [](const QString& name) { return QStandardPaths::findExecutable(name); };
    search.start = [](const QString& path) { return QProcess::startDetached(path, {}); };
    return search;
}

bool StartSysInfo(model::Prompter& prompter, const SysInfoSearch& search)
{
    QString path = search.registered ? search.registered() : QString();
    for (qsizetype i = 0; path.isEmpty() && i < search.candidates.size(); ++i)
        path = search.findExecutable ? search.findExecutable(search.candidates[i]) : QString();
    if (!path.isEmpty() && search.start && search.start(path))
        return true;
    prompter.message(frmAbout1::tr("System Information Is Unavailable At This Time"));
    return false;
}

void paintCurvixIcon(QPainter& p, int side)
{
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(side / 64.0, side / 64.0);
    p.setPen(QPen(QColor(90, 90, 90), 2));
    p.setBrush(Qt::white);
    p.drawRoundedRect(QRectF(3, 3, 58, 58), 9, 9);
    p.setPen(QPen(QColor(40, 40, 40), 2.5));
    p.drawLine(QPointF(9, 44), QPointF(55, 44));
    p.drawLine(QPointF(24, 9), QPointF(24, 55));
    QPainterPath parabola;
    for (int i = 0; i <= 40; ++i) {
        const double x = -1.6 + 3.2 * i / 40.0;
        const QPointF point(33 + 14 * x, 48 - 14 * x * x);
        if (i == 0)
            parabola.moveTo(point);
        else
            parabola.lineTo(point);
    }
    p.setPen(QPen(QColor(0, 102, 204), 4, Qt::SolidLine, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    p.drawPath(parabola);
    p.restore();
}

QIcon curvixIcon()
{
    return paintedIcon(64, [](QPainter& p) { paintCurvixIcon(p, 64); });
}

QString curvixVersion()
{
    // Missing parts count as 0, so that "1.2" still reads as major, minor and revision.
    QStringList parts = QStringLiteral(CURVIX_VERSION).split(QLatin1Char('.'));
    while (parts.size() < 3)
        parts << QStringLiteral("0");
    return parts.mid(0, 3).join(QLatin1Char('.'));
}

frmAbout1::frmAbout1(model::Prompter& prompter, QWidget* parent)
    : QDialog(parent), m_prompter(prompter), m_search(systemSysInfoSearch())
{
    setObjectName(QStringLiteral("frmAbout1"));
    setWindowTitle(LoadResString(3000));
    setWindowIcon(curvixIcon());

    picIcon = new QLabel;
    picIcon->setObjectName(QStringLiteral("picIcon"));
    picIcon->setPixmap(curvixIcon().pixmap(QSize(64, 64), devicePixelRatioF()));
    picIcon->setAlignment(Qt::AlignTop | Qt::AlignHCenter);

    lblTitle = new QLabel(LoadResString(1));
    lblTitle->setObjectName(QStringLiteral("lblTitle"));
    QFont titleFont = lblTitle->font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.8);
    titleFont.setBold(true);
    lblTitle->setFont(titleFont);

    lblVersion = new QLabel(tr("Version %1").arg(curvixVersion()));
    lblVersion->setObjectName(QStringLiteral("lblVersion"));

    lblDescription = new QLabel(LoadResString(3001));
    lblDescription->setObjectName(QStringLiteral("lblDescription"));
    lblDescription->setWordWrap(true);

    auto* rule = new QFrame;
    rule->setFrameShape(QFrame::HLine);
    rule->setFrameShadow(QFrame::Sunken);

    // Plain text, so that the line break between notice and credit is a real one.
    lblDisclaimer = new QLabel(LoadResString(3002) + QLatin1Char('\n') + LoadResString(3003));
    lblDisclaimer->setObjectName(QStringLiteral("lblDisclaimer"));
    lblDisclaimer->setTextFormat(Qt::PlainText);
    lblDisclaimer->setWordWrap(true);
    lblDisclaimer->setTextInteractionFlags(Qt::TextSelectableByMouse);

    cmdOK = new QPushButton(LoadResString(2011));
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    cmdSysInfo = new QPushButton(LoadResString(3004));
    cmdSysInfo->setObjectName(QStringLiteral("cmdSysInfo"));
    cmdSysInfo->setAutoDefault(false);

    auto* text = new QVBoxLayout;
    text->addWidget(lblTitle);
    text->addWidget(lblVersion);
    text->addWidget(lblDescription);
    text->addSpacing(8);
    text->addWidget(rule);
    text->addWidget(lblDisclaimer);
    text->addStretch();

    auto* top = new QHBoxLayout;
    top->addWidget(picIcon);
    top->addSpacing(12);
    top->addLayout(text, 1);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdSysInfo);
    buttons->addWidget(cmdOK);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top, 1);
    layout->addLayout(buttons);

    connect(cmdOK, &QPushButton::clicked, this, &frmAbout1::cmdOK_Click);
    connect(cmdSysInfo, &QPushButton::clicked, this, &frmAbout1::cmdSysInfo_Click);

    setMinimumWidth(520);
}

void frmAbout1::cmdSysInfo_Click()
{
    StartSysInfo(m_prompter, m_search);
}

void frmAbout1::cmdOK_Click()
{
    accept();
}

} // namespace curvix::app
