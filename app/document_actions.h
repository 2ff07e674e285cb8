#pragma once

#include "model/app_state.h"
#include "model/drawing.h"
#include "model/prompter.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QLockFile>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QUndoStack>

#include <functional>
#include <memory>

class QMainWindow;
class QMenu;

namespace curvix::app {

class ExportActions;
struct WindowActions;

// The drawing as a document: its file (Save, Save As, Open, Open Recent), the title with
// its modified mark, undo and redo of every change, and the recovery file that outlives a
// crash. Every change of the drawing ends in checkpoint(): the drawing is compared with the
// last one, and a difference becomes one step of the undo stack.
class DocumentActions : public QObject {
    Q_OBJECT
public:
    // How the window hands its drawing over, and shows another in its place (false, with
    // the reason, when the drawing cannot be shown; the window then stays as it was).
    struct WindowPort {
        std::function<model::Drawing()> capture;
        std::function<bool(const model::Drawing&, QString*)> show;
    };

    DocumentActions(model::AppState& state, model::Prompter& prompter, ExportActions& pictures,
                    QMainWindow* window, WindowPort port);
    ~DocumentActions() override;

    // Adds Open, Open Recent, Save and the undo commands to the window's menus.
    void addToMenus(WindowActions& actions);

    bool save();
    // Save As: a drawing or a picture, by the type chosen. drawingOffered chooses the
    // drawing type first, as the question before closing does.
    bool saveAs(bool drawingOffered = false);
    // Asks to save a changed drawing; false when the user cancelled.
    bool askSaveChanges();
    void open();
    // Opens a drawing file after asking to save changes; a file that cannot be opened is
    // refused with a message naming it, and the drawing on screen stays.
    bool openFile(const QString& path);
    // The drawing on screen is a new one (after New): untitled from now on.
    void drawingCleared();

    // Records the drawing as it now is: a change becomes an undo step. While continuing is
    // true (a drag), the changes join the step the drag began.
    void checkpoint(bool continuing = false);
    QUndoStack& undoStack() { return m_undo; }

    // At start: a drawing left behind by a crashed Curvix is offered back.
    void offerRecovery();
    // A clean exit: the recovery file goes.
    void closeCleanly();

private:
    friend class DrawingChange;

    // Shows a drawing read or opened; false when there is none or it cannot be shown.
    bool show(const std::optional<model::Drawing>& drawing, QString* error);
    void showBytes(const QByteArray& bytes);
    void setFilePath(const QString& path);
    void updateTitle();
    void rememberRecent(const QString& path);
    void showRecentMenu();
    void scheduleRecovery();
    void writeRecovery();
    void removeRecovery();
    QByteArray currentBytes() const;

    model::AppState& m_state;
    model::Prompter& m_prompter;
    ExportActions& m_pictures;
    QMainWindow* m_window;
    WindowPort m_port;
    QUndoStack m_undo;
    QByteArray m_last;     // the drawing at the last checkpoint
    bool m_showing = false; // an undo step is being shown: no checkpoint of its own
    QString m_filePath;
    QMenu* m_recentMenu = nullptr;

    QTimer m_recoveryTimer;
    QElapsedTimer m_unsavedSince; // since the first change not yet in the recovery file
    std::unique_ptr<QLockFile> m_recoveryLock;
};

} // namespace curvix::app
