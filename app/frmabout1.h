#pragma once

#include "model/prompter.h"

#include <QDialog>
#include <QIcon>
#include <QStringList>

#include <functional>
#include <optional>

class QLabel;
class QPainter;
class QPushButton;

namespace curvix::app {

// Where StartSysInfo looks for the operating system's system-information tool and how it
// starts it. The program uses systemSysInfoSearch(); a test passes its own lookups, so it
// can check what happens on a machine without such a tool without changing the machine.
struct SysInfoSearch {
    // The tool that the system itself registers (the Windows registry); "" when none.
    std::function<QString()> registered;
    // Program names tried on the PATH, most wanted first.
    QStringList candidates;
    // The full path of a program on the PATH, "" when it is not there.
    std::function<QString(const QString& name)> findExecutable;
    // Starts the program on its own; false when it could not be started.
    std::function<bool(const QString& path)> start;
};

// The search of this platform: the registry on Windows; elsewhere kinfocenter, hardinfo
// and gnome-system-monitor on the PATH, in that order. The tool is started detached.
SysInfoSearch systemSysInfoSearch();

// Starts the system-information tool, or shows "System Information Is Unavailable At This
// Time" through the prompter when there is none or it would not start. Returns whether a
// tool was started.
bool StartSysInfo(model::Prompter& prompter, const SysInfoSearch& search = systemSysInfoSearch());

#ifdef Q_OS_WIN
// One value of a registry key, e.g. GetKeyValue("HKEY_LOCAL_MACHINE",
// "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", "PATH"); nothing when the key or the value
// is missing or unreadable. A 32-bit number comes back as "&h" and its hexadecimal digits.
std::optional<QString> GetKeyValue(const QString& hive, const QString& keyName,
                                   const QString& valueName);
#endif

// The program's icon, drawn here so that it needs no picture file: a parabola over axes.
QIcon curvixIcon();

// Paints that icon into the square (0, 0, side, side) of any paint device, so that the
// installed icon files (PNG in every size, SVG) are the same picture as the window's.
void paintCurvixIcon(QPainter& painter, int side);

// The version of this build as major.minor.revision.
QString curvixVersion();

// The About window: icon, title, version, our rights notice with the credit of the
// symbolic library, OK and System Info. Modal when opened with exec().
class frmAbout1 : public QDialog {
    Q_OBJECT
public:
    explicit frmAbout1(model::Prompter& prompter, QWidget* parent = nullptr);

    // Replaces where the System Info button looks.
    void setSysInfoSearch(SysInfoSearch search) { m_search = std::move(search); }

    void cmdSysInfo_Click();
    void cmdOK_Click();

private:
    model::Prompter& m_prompter;
    SysInfoSearch m_search;
    QLabel* picIcon = nullptr;
    QLabel* lblTitle = nullptr;
    QLabel* lblVersion = nullptr;
    QLabel* lblDescription = nullptr;
    QLabel* lblDisclaimer = nullptr;
    QPushButton* cmdOK = nullptr;
    QPushButton* cmdSysInfo = nullptr;
};

} // namespace curvix::app
