#include "app/document_actions.h"

#include "app/cli.h"
#include "app/export_actions.h"
#include "app/window_actions.h"
#include "model/drawing_file.h"
#include "model/strings.h"
#include "output/picture_file.h"
#include "output/save_name.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QMainWindow>
#include <QMenu>
#include <QSettings>
#include <QStandardPaths>

namespace curvix::app {

using model::LoadResString;

namespace {

constexpr int kRecentCount = 8;
const QString kRecentKey = QStringLiteral("recentDrawings");
// A change is in the recovery file this long after the last one, and while changes keep
// coming, never more than kRecoveryMostMs after the first one still missing.
constexpr int kRecoveryQuietMs = 2000;
constexpr qint64 kRecoveryMostMs = 30000;

QSettings store()
{
    return QSettings(QStringLiteral("Curvix"), QStringLiteral("Curvix"));
}

QString recoveryFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

QString recoveryFile(qint64 pid)
{
    return recoveryFolder() + QStringLiteral("/recovery-%1.curvix").arg(pid);
}

QString lockFileOf(const QString& recovery)
{
    return QString(recovery).replace(QLatin1String(".curvix"), QLatin1String(".lock"));
}

} // namespace

// One step of the undo stack: the drawing before and after a change, as file bytes.
class DrawingChange : public QUndoCommand {
public:
    DrawingChange(DocumentActions& document, QByteArray before, QByteArray after, bool dragged)
        : m_document(document), m_before(std::move(before)), m_after(std::move(after)),
          m_dragged(dragged)
    {
    }

    // The first redo is the change itself, already on screen.
    void redo() override
    {
        if (m_done)
            m_document.showBytes(m_after);
        m_done = true;
    }
    void undo() override { m_document.showBytes(m_before); }

    // The steps of one drag are one change.
    int id() const override { return 1; }
    bool mergeWith(const QUndoCommand* other) override
    {
        const auto* next = static_cast<const DrawingChange*>(other);
        if (!next->m_dragged)
            return false;
        m_after = next->m_after;
        return true;
    }

private:
    DocumentActions& m_document;
    QByteArray m_before;
    QByteArray m_after;
    bool m_dragged;
    bool m_done = false;
};

DocumentActions::DocumentActions(model::AppState& state, model::Prompter& prompter,
                                 ExportActions& pictures, QMainWindow* window, WindowPort port)
    : QObject(window), m_state(state), m_prompter(prompter), m_pictures(pictures), m_window(window),
      m_port(std::move(port))
{
    m_recoveryTimer.setSingleShot(true);
    connect(&m_recoveryTimer, &QTimer::timeout, this, &DocumentActions::writeRecovery);
    connect(&m_undo, &QUndoStack::cleanChanged, this, [this](bool clean) {
        m_state.documentChanged = !clean;
        if (clean)
            removeRecovery();
        updateTitle();
    });
    updateTitle();
}

DocumentActions::~DocumentActions()
{
    // The stack, cleared as it goes, would report to members already gone.
    disconnect(&m_undo, nullptr, this, nullptr);
}

void DocumentActions::addToMenus(WindowActions& a)
{
    auto command = [this](const char* name, int text, const QKeySequence& keys) {
        auto* action = new QAction(LoadResString(text), m_window);
        action->setObjectName(QLatin1String(name));
        action->setShortcut(keys);
        return action;
    };
    QAction* open = command("mnuopen", 5150, QKeySequence::Open);
    QAction* save = command("mnusave", 5152, QKeySequence::Save);
    a.saveAs->setShortcut(QKeySequence::SaveAs);
    a.fileMenu->insertAction(a.saveAs, open);
    m_recentMenu = new QMenu(LoadResString(5151), a.fileMenu);
    m_recentMenu->setObjectName(QStringLiteral("mnurecent"));
    a.fileMenu->insertMenu(a.saveAs, m_recentMenu);
    a.fileMenu->insertAction(a.saveAs, save);
    connect(m_recentMenu, &QMenu::aboutToShow, this, &DocumentActions::showRecentMenu);
    connect(open, &QAction::triggered, this, &DocumentActions::open);
    connect(save, &QAction::triggered, this, &DocumentActions::save);

    QAction* undo = m_undo.createUndoAction(m_window, LoadResString(5153));
    QAction* redo = m_undo.createRedoAction(m_window, LoadResString(5154));
    undo->setObjectName(QStringLiteral("mnuundo"));
    redo->setObjectName(QStringLiteral("mnuredo"));
    undo->setShortcut(QKeySequence::Undo);
    redo->setShortcuts({QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence::Redo});
    const QList<QAction*> editActions = a.editMenu->actions();
    QAction* first = editActions.isEmpty() ? nullptr : editActions.first();
    a.editMenu->insertActions(first, {undo, redo});
    a.editMenu->insertSeparator(first);
    showRecentMenu(); // so that the menu is there for the keyboard before its first showing
}

QByteArray DocumentActions::currentBytes() const
{
    return model::writeDrawing(m_port.capture());
}

void DocumentActions::checkpoint(bool continuing)
{
    if (m_showing)
        return;
    QByteArray now = currentBytes();
    if (m_last.isNull()) { // the drawing the window starts with
        m_last = std::move(now);
        return;
    }
    if (now == m_last)
        return;
    m_undo.push(new DrawingChange(*this, m_last, now, continuing));
    m_last = std::move(now);
    m_state.documentChanged = !m_undo.isClean();
    updateTitle();
    scheduleRecovery();
}

bool DocumentActions::show(const std::optional<model::Drawing>& drawing, QString* error)
{
    if (!drawing)
        return false;
    m_showing = true;
    const bool shown = m_port.show(*drawing, error);
    m_showing = false;
    return shown;
}

void DocumentActions::showBytes(const QByteArray& bytes)
{
    QString error;
    if (!show(model::readDrawing(bytes, &error), &error)) {
        m_prompter.message(error);
        return;
    }
    m_last = bytes;
    m_state.documentChanged = !m_undo.isClean();
    scheduleRecovery();
}

bool DocumentActions::save()
{
    if (m_filePath.isEmpty())
        return saveAs(true);
    QString error;
    if (!model::saveDrawingFile(m_filePath, m_port.capture(), &error)) {
        m_prompter.message(error);
        return false;
    }
    m_undo.setClean();
    m_state.documentChanged = false;
    rememberRecent(m_filePath);
    return true;
}

bool DocumentActions::saveAs(bool drawingOffered)
{
    const QString drawingType = LoadResString(5155);
    QString chosenType = drawingOffered ? drawingType : QString();
    const QString title = LoadResString(428).remove(QLatin1Char('&'));
    const QString folder = m_filePath.isEmpty() ? output::graphsFolder(LoadResString(9))
                                                : QFileInfo(m_filePath).absolutePath();
    const QString types = output::saveFilter(LoadResString(23)) + QStringLiteral(";;") + drawingType;
    const QString fileName = output::askSaveName(m_prompter, title, folder, types, &chosenType);
    if (fileName.isEmpty())
        return false;
    if (!isDrawingFileName(fileName)) {
        // A picture keeps no drawing, but it is what the user chose to keep of this one.
        const bool saved = m_pictures.savePicture(fileName);
        if (saved)
            m_state.documentChanged = false;
        return saved;
    }
    const QString previous = m_filePath;
    setFilePath(fileName);
    if (!save()) {
        setFilePath(previous);
        return false;
    }
    return true;
}

bool DocumentActions::askSaveChanges()
{
    if (!m_state.documentChanged)
        return true;
    switch (m_prompter.ask(LoadResString(620), model::Prompter::Buttons::YesNoCancel)) {
    case model::Prompter::Button::Cancel:
        return false;
    case model::Prompter::Button::Yes:
        return m_filePath.isEmpty() ? saveAs(true) : save();
    default:
        return true;
    }
}

void DocumentActions::open()
{
    const QString folder = m_filePath.isEmpty() ? output::graphsFolder(LoadResString(9))
                                                : QFileInfo(m_filePath).absolutePath();
    const QString fileName = m_prompter.openFileName(LoadResString(5157), folder, LoadResString(5155));
    if (!fileName.isEmpty())
        openFile(fileName);
}

bool DocumentActions::openFile(const QString& path)
{
    if (!askSaveChanges())
        return false;
    QString error;
    if (!show(model::openDrawingFile(path, &error), &error)) {
        m_prompter.message(error);
        return false;
    }
    m_undo.clear();
    m_last = currentBytes();
    m_state.documentChanged = false;
    setFilePath(QFileInfo(path).absoluteFilePath());
    rememberRecent(m_filePath);
    removeRecovery();
    return true;
}

void DocumentActions::drawingCleared()
{
    setFilePath(QString());
    checkpoint();
    // A new drawing has nothing to save; undo still brings the old one back.
    m_undo.setClean();
    m_state.documentChanged = false;
    updateTitle();
}

void DocumentActions::setFilePath(const QString& path)
{
    m_filePath = path;
    updateTitle();
}

void DocumentActions::updateTitle()
{
    const QString program = LoadResString(1);
    // The mark [*] shows while the drawing has changes that are not saved.
    m_window->setWindowTitle(m_filePath.isEmpty()
                                 ? program + QStringLiteral("[*]")
                                 : QStringLiteral("%1[*] – %2").arg(QFileInfo(m_filePath).fileName(), program));
    m_window->setWindowModified(m_state.documentChanged);
}

void DocumentActions::rememberRecent(const QString& path)
{
    QSettings settings = store();
    QStringList recent = settings.value(kRecentKey).toStringList();
    recent.removeAll(path);
    recent.prepend(path);
    while (recent.size() > kRecentCount)
        recent.removeLast();
    settings.setValue(kRecentKey, recent);
}

void DocumentActions::showRecentMenu()
{
    m_recentMenu->clear();
    const QStringList recent = store().value(kRecentKey).toStringList();
    for (qsizetype i = 0; i < recent.size(); ++i) {
        const QString& path = recent[i];
        QAction* entry = m_recentMenu->addAction(
            QStringLiteral("&%1 %2").arg(i + 1).arg(QFileInfo(path).fileName()));
        entry->setToolTip(path);
        connect(entry, &QAction::triggered, this, [this, path] {
            if (!QFileInfo::exists(path)) {
                m_prompter.message(LoadResString(5158).arg(QDir::toNativeSeparators(path)));
                QSettings settings = store();
                QStringList list = settings.value(kRecentKey).toStringList();
                list.removeAll(path);
                settings.setValue(kRecentKey, list);
                return;
            }
            openFile(path);
        });
    }
    m_recentMenu->setEnabled(!recent.isEmpty());
    if (!recent.isEmpty()) {
        m_recentMenu->addSeparator();
        connect(m_recentMenu->addAction(LoadResString(5159)), &QAction::triggered, this,
                [] { store().remove(kRecentKey); });
    }
}

void DocumentActions::scheduleRecovery()
{
    if (!m_state.documentChanged)
        return;
    if (!m_unsavedSince.isValid())
        m_unsavedSince.start();
    if (m_unsavedSince.elapsed() >= kRecoveryMostMs)
        writeRecovery();
    else
        m_recoveryTimer.start(kRecoveryQuietMs);
}

void DocumentActions::writeRecovery()
{
    m_recoveryTimer.stop();
    m_unsavedSince.invalidate();
    if (!m_state.documentChanged)
        return;
    const QString path = recoveryFile(QCoreApplication::applicationPid());
    if (!m_recoveryLock) {
        // The lock tells a later start that this file belongs to a running Curvix.
        if (!QDir().mkpath(recoveryFolder()))
            return;
        m_recoveryLock = std::make_unique<QLockFile>(lockFileOf(path));
        m_recoveryLock->setStaleLockTime(0);
        if (!m_recoveryLock->tryLock(0)) {
            m_recoveryLock.reset();
            return;
        }
    }
    // A recovery file that cannot be written is no reason to trouble the user.
    model::saveDrawingFile(path, m_port.capture());
}

void DocumentActions::removeRecovery()
{
    m_recoveryTimer.stop();
    m_unsavedSince.invalidate();
    QFile::remove(recoveryFile(QCoreApplication::applicationPid()));
    m_recoveryLock.reset();
}

void DocumentActions::closeCleanly()
{
    removeRecovery();
}

void DocumentActions::offerRecovery()
{
    const QDir folder(recoveryFolder());
    const QStringList left = folder.entryList({QStringLiteral("recovery-*.curvix")}, QDir::Files);
    for (const QString& name : left) {
        const QString path = folder.filePath(name);
        QLockFile lock(lockFileOf(path));
        lock.setStaleLockTime(0);
        if (!lock.tryLock(0))
            continue; // its Curvix still runs
        const bool restore =
            m_prompter.ask(LoadResString(5156), model::Prompter::Buttons::YesNo) == model::Prompter::Button::Yes;
        QString error;
        const bool shown = restore && show(model::openDrawingFile(path, &error), &error);
        if (restore && !shown)
            m_prompter.message(LoadResString(5160).arg(QDir::toNativeSeparators(path), error));
        QFile::remove(path);
        lock.unlock();
        if (shown) {
            // Back as an unsaved drawing: undo goes back to the empty start.
            checkpoint();
            return;
        }
    }
}

} // namespace curvix::app
