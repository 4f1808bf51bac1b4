#pragma once
// The main form: menu, status bar and the area of the sheet. The logic of the
// screen is split over mainwindow_*.cpp by what it serves.

#include "document/workspace.h"

#include <QElapsedTimer>
#include <QMainWindow>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <array>
#include <functional>
#include <memory>

class QAction;
class QDialog;
class QThread;
class QLabel;
class QMenu;
class QMenuBar;
class QPushButton;
class QScrollArea;
class QSplitter;
class QStatusBar;
class QTabBar;
class QTreeWidget;
class QTreeWidgetItem;
class QLineEdit;
class AboutDialog;
class Dialogs;
class LabourLibraryDialog;
class SizeDialog;
class BoxLabel;
class CheckBox;
class EditCombo;
class FixedList;
class EditCommands;
class GroupRewriteCommands;
class LibraryCommands;
class OutputCommands;
class GradientPanel;
class NumberEdit;
class RadioGroup;
class MainMenu;
class OptionPanel;
class PipeTypeHeader;
class PipeTypeTree;
class PriceSheet;
class ToggleSwitch;

// The dialogs the program makes at its start and the window shows; a
// command whose dialog is not given makes one for the time it runs.
struct FormDialogs {
    AboutDialog* about = nullptr;
    SizeDialog* sizes = nullptr;
    LabourLibraryDialog* library = nullptr;
};

// The first command-line argument of the program, the launch string.
QString launchStringArgument();

class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    // What the window shows and works on.
    Workspace& workspace() { return *workspace_; }
    PipeTypeDocument& document() { return workspace_->document(); }
    // Builds the form and runs its creation step with the given launch string.
    explicit MainWindow(Dialogs& dialogs, const QString& launchString = launchStringArgument(),
                        QWidget* parent = nullptr);
    // Every box, question, file choice, clipboard text and program start of
    // the window goes through these.
    Dialogs& dialogs() const { return dialogs_; }
    ~MainWindow() override;

    void setFormDialogs(const FormDialogs& dialogs) { formDialogs_ = dialogs; }
    const FormDialogs& formDialogs() const { return formDialogs_; }

    // The current pipe type and the refused start.
    int currentCategory = 1;
    int currentGroup = 1;
    int currentPipeType = 1;
    bool noDataFolder = false;
    // Set once a pipe type has been loaded: until then the rows belong to no
    // pipe type and are never saved.
    bool rowsLoaded = false;
    // The database file is none or lacks its tables: nothing is loaded and
    // nothing is written to it.
    bool noDatabase = false;
    // "[Network_Dir]" of the network file, read as the form is created; the
    // folder it names takes no part in finding the database.
    QString networkFolder;

    // ---- Menus ------------------------------------------------------------
    // The main menu, the tree's pop-up menu and the named commands.
    MainMenu& menus() const { return *menus_; }

    // ---- Status bar -----------------------------------------------------
    QStatusBar* statusLine = nullptr;
    static constexpr int StatusPanelCount = 7;
    void setStatusPanel(int index, const QString& text);
    QString statusPanel(int index) const;
    QLabel* statusPanelLabel(int index) const;

    // ---- Groups ---------------------------------------------------------
    // Group g, 1 to 10: its menu item, its naming item, and its name (the
    // title of its menu item, the program's store of the name).
    QMenu* groupMenu(int g) const;
    QAction* groupNamingItem(int g) const;
    QString groupName(int g) const;
    void setGroupName(int g, const QString& name);

    // ---- Controls of the sheet and the pipe type ----------------------------
    QLabel* releaseLabel = nullptr;
    PipeTypeTree* tree = nullptr;
    QSplitter* treeSplitter = nullptr; // between the tree and the sheet
    QScrollArea* sheetScroll = nullptr;

    // The names of the pipe type, the print style and 登　録.
    PipeTypeHeader* header() const { return header_; }

    // The tabs and the two grids.
    PriceSheet* sheet() const { return sheet_; }

    // The calculation options of the pipe type.
    OptionPanel* optionPanel() const { return options_; }

    // Set while showPipeType fills the controls.
    bool refreshing = false;

    // ---- The screen logic -------------------------------------------------
    QTreeWidgetItem* selectedNode() const;
    // The tree node of the pipe type on the sheet.
    QTreeWidgetItem* currentPipeTypeNode() const;
    void showPipeType();
    void applyControls();
    // Rows 1 to 59 calculated; the lines of the current tab and the prices
    // shown.
    void recalcAndShowTab();
    // The size presets, with the dialog made at the start.
    void setSizes();
    void treeClicked();
    // The steps of opening and closing.
    void prepareShow();

    // How a save of the pipe type on the sheet ended: written, not written
    // (the failure has been shown, the rows stay unsaved), or not written by
    // the user's choice after a change made elsewhere (the rows on the sheet
    // are the user's unsaved ones, or the stored ones read again).
    enum class SaveResult { Saved, Failed, Declined };
    // SavePipeType of the pipe type on the sheet; refused while no pipe type
    // is loaded. When the stored rows were changed elsewhere after the load,
    // asks whether to write over them, read them again, or keep the rows.
    SaveResult saveCurrentPipeType(int showMessage);
    // True once a pipe type is loaded; else says so, ending with refusal.
    bool rowsAreLoaded(const QString& refusal);
    // Names group tag + 1 by the user's input.
    void nameGroup(int tag);
    // The pipe type on the sheet has been moved to place kan of its group:
    // it stays current there, its node selected, the group's names shown
    // again.
    void followMovedPipeType(int kan);

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    // The form's own place and size.
    static constexpr int DefaultLeft = 2;
    static constexpr int DefaultTop = 2;
    static constexpr int DefaultWidth = 1444;
    static constexpr int DefaultHeight = 851;
    static const std::array<int, StatusPanelCount> StatusPanelWidths;
    // The emblem over the tree.
    GradientPanel* velmoraEmblem = nullptr;
    QLabel* ostrelLabel = nullptr;  // "Ostrel"
    QLabel* productLabel = nullptr; // "Qorvale"

    void clearSheet();
    void takeSelection();
    void fillGroupNodes(int g);
    void loadGroupNames();
    void saveGroupNames();
    void treeMouseReleased();
    // Enter in a name box: the tree node takes the material name.
    void nameEntered();
    void saveButtonClicked();
    void saveItemTriggered();
    // Where the window goes when no geometry was saved.
    QRect defaultGeometry() const;
    // False when the close is to be refused (see closeEvent).
    bool mayClose();
    // Rows that could not be saved at closing: the user tries again, stays,
    // or closes without them. True when the window may close.
    bool closeWithUnsavedRows(const QString& heading);
    // Loads the pipe type that select (nothing: the one on the sheet) makes
    // current and shows it; false after a failure, which has been shown and
    // left everything as it was.
    bool loadAndShow(const std::function<void()>& select);
    void finishClose();
    void readDisplayFile();
    void setTreeWidth(int width);
    void writeDisplayFile();
    // Asks to save a changed pipe type; saves on yes. Saved also when nothing
    // needed saving or the user said no.
    SaveResult askToSave();
    // After the tree has handled a key or a mouse button: a selection moved
    // without a click loads like a click; namingNode, the node a release with
    // Shift came on, is then named.
    void afterTreeInput(QTreeWidgetItem* namingNode);
    void initialise(const QString& launchString);
    void showAbout();
    void showInstallFolder();
    void startCalculator();
    void exitProgram();
    void toggleTree();
    void toggleStatusBar();
    // Shared by the ten naming items; the group is the tag of the sender.
    void groupNamingTriggered();
    void buildSheet();
    void connectSheet();
    void treeClickSteps();
    bool shown_ = false;
    bool treeClickRunning_ = false;
    // The node the last tree click went to.
    QTreeWidgetItem* lastTreeNode_ = nullptr;
    std::function<void()> pendingTreeInput_;
    void buildMenu();
    void buildStatusBar();

    RowTable& rows() { return workspace_->document().rows(); }
    const DataPaths& paths() const { return workspace_->paths(); }
    Dialogs& dialogs_;
    Workspace* workspace_ = nullptr;
    QWidget* centralArea_ = nullptr;
    PriceSheet* sheet_ = nullptr;
    OptionPanel* options_ = nullptr;
    PipeTypeHeader* header_ = nullptr;
    std::array<QLabel*, StatusPanelCount> statusPanels{};
    FormDialogs formDialogs_;
    std::unique_ptr<MainMenu> menus_;

    GroupRewriteCommands* groupRewrite_ = nullptr;

public:
    // The group rewrites of the edit menu and their run.
    GroupRewriteCommands* groupRewrite() const { return groupRewrite_; }
    // The outputs and the print command.
    OutputCommands* outputs() const { return outputs_; }
    // The standard labour library.
    LibraryCommands* library() const { return library_; }
    // Copy and paste, moving, clearing and undo.
    EditCommands* edits() const { return edits_; }

private:
    EditCommands* edits_ = nullptr;
    LibraryCommands* library_ = nullptr;
    OutputCommands* outputs_ = nullptr;
};

// The program file's folder, as the install folder check shows it.
QString installFolder();
// The calculator program found on this system; empty when there is none.
QString calculatorProgram();
