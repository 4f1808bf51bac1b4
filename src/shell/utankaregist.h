#pragma once
// The main form: menu, status bar and the area of the sheet. The logic of the
// screen is split over utankaregist_*.cpp by what it serves.

#include <QElapsedTimer>
#include <QMainWindow>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <array>
#include <functional>

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
class TBoxLabel;
class TCheckBox;
class TEditCombo;
class TFixedList;
class TGradPan;
class TNumberEdit;
class TRadioGroup;
class TStrColGrid;
class TToggleSwitch;

// The first command-line argument of the program, the launch string.
QString LaunchStringArgument();

class TFtankaregist : public QMainWindow {
    Q_OBJECT
public:
    // Builds the form and runs its creation step with the given launch string.
    explicit TFtankaregist(const QString& launchString = LaunchStringArgument(),
                           QWidget* parent = nullptr);
    ~TFtankaregist() override;

    static constexpr int DefaultLeft = 2;
    static constexpr int DefaultTop = 2;
    static constexpr int DefaultWidth = 1444;
    static constexpr int DefaultHeight = 851;

    // The current pipe type and the refused start.
    int CurrentCtg = 1;
    int CurrentGrp = 1;
    int CurrentKan = 1;
    bool NoDataFolder = false;
    // Set once a pipe type has been loaded: until then the rows belong to no
    // pipe type and are never saved.
    bool RowsLoaded = false;
    // The database file is none or lacks its tables: nothing is loaded and
    // nothing is written to it.
    bool NoDatabase = false;
    // "[Network_Dir]" of the network file, read as the form is created; the
    // folder it names takes no part in finding the database.
    QString NetworkFolder;

    // ---- Main menu ------------------------------------------------------
    QMenuBar* MainMenu1 = nullptr;

    // "ファイル(&F)"
    QMenu* K1 = nullptr;
    QAction* N23 = nullptr; // このソフトウェアについて
    QAction* N28 = nullptr; // インストールフォルダー確認
    QAction* N31 = nullptr; // 電卓
    QAction* N1 = nullptr;  // 保  存, Ctrl+S
    QAction* N8 = nullptr;  // 印  刷
    QAction* N20 = nullptr; // separator, shown by the show step
    QAction* N21 = nullptr; // 終了(&X)

    // "表  示(&D)"
    QMenu* N9 = nullptr;
    QAction* tree_list = nullptr;
    QAction* status_bar = nullptr;

    // "管種名称編集(&P)": one sub-menu per group, its title the group name,
    // with a naming item whose data (Tag) is the group index 0 to 9.
    QMenu* N44 = nullptr;
    QMenu *x1 = nullptr, *x22 = nullptr, *x43 = nullptr, *x64 = nullptr, *x85 = nullptr,
          *x106 = nullptr, *x127 = nullptr, *x148 = nullptr, *x169 = nullptr, *x190 = nullptr;
    QAction *N53 = nullptr, *N55 = nullptr, *N57 = nullptr, *N59 = nullptr, *N60 = nullptr,
            *N63 = nullptr, *N65 = nullptr, *N67 = nullptr, *N69 = nullptr, *N71 = nullptr;

    // "編 集1(&E)"
    QMenu* K4 = nullptr;
    QAction* N2 = nullptr;  // 取消, Ctrl+Z
    QAction* N12 = nullptr; // 標準歩掛選択
    QAction* N30 = nullptr; // グループ内の基礎工費を、表示中のものに変更
    QAction* N10 = nullptr; // グループ内の計算オプションを、表示中のものに変更
    QAction* N3 = nullptr;  // ↑上へ移動
    QAction* N11 = nullptr; // ↓下へ移動
    QAction* K17 = nullptr; // 現在の管材単価計算 (no command)
    QAction* N24 = nullptr; // separator, shown by the show step
    QAction *all_copy_1 = nullptr, *all_copy_2 = nullptr, *all_copy_3 = nullptr,
            *all_copy_4 = nullptr;
    QAction *all_paste_1 = nullptr, *all_paste_2 = nullptr, *all_paste_3 = nullptr,
            *all_paste_4 = nullptr;
    QAction* ActionSaveParts1 = nullptr;
    QAction* N22 = nullptr; // 管材をクリアー

    // "細目編集(&B)"
    QMenu* K21 = nullptr;
    QAction *item_copy_1 = nullptr, *item_copy_2 = nullptr, *item_copy_3 = nullptr,
            *item_copy_4 = nullptr, *item_copy_5 = nullptr;
    QAction *item_paste_1 = nullptr, *item_paste_2 = nullptr, *item_paste_3 = nullptr,
            *item_paste_4 = nullptr, *item_paste_5 = nullptr;
    QAction* N33 = nullptr; // 現在の細目をクリアー

    // "外部データ入出力(&O)"
    QMenu* N18 = nullptr;
    QAction* ActionExcelOut1 = nullptr;
    QAction* CSV1 = nullptr;
    QAction* N19 = nullptr;

    // The tree's pop-up menu, for TreeView1.
    QMenu* PopupMenu1 = nullptr;
    QAction* N27 = nullptr; // ActionMoveUp
    QAction* N29 = nullptr; // ActionMoveDown

    // ---- Actions ----------------------------------------------------------
    // Named commands. A menu item bound to an action follows its enabled and
    // visible state and runs it when triggered (see BindAction).
    QAction* ActionRelaseVersion = nullptr;
    QAction* ActionPrint = nullptr;
    QAction* FileExit1 = nullptr;
    QAction* ActionUndo = nullptr; // Esc on the form
    QAction* ActionLoadparts = nullptr;
    QAction* Actionwdatachange = nullptr;
    QAction* ActionOptionChange = nullptr;
    QAction* ActionMoveUp = nullptr;
    QAction* ActionMoveDown = nullptr;
    QAction* ActionSaveParts = nullptr;
    QAction* ActionExcelOut = nullptr;
    QAction* ActionSizeSet = nullptr;

    // ---- Status bar -----------------------------------------------------
    QStatusBar* StatusBar1 = nullptr;
    static constexpr int StatusPanelCount = 7;
    static const std::array<int, StatusPanelCount> StatusPanelWidths;
    void SetStatusPanel(int index, const QString& text);
    QString StatusPanel(int index) const;
    QLabel* StatusPanelLabel(int index) const;

    // ---- Groups ---------------------------------------------------------
    // The names the groups get before the configuration record is read.
    static const std::array<const char*, 10> DefaultGroupNames;
    // Group g, 1 to 10: its menu item, its naming item, and its name (the
    // title of its menu item, the program's store of the name).
    QMenu* GroupMenuItem(int g) const;
    QAction* GroupNamingItem(int g) const;
    QString GroupName(int g) const;
    void SetGroupName(int g, const QString& name);

    // ---- The sheet area -------------------------------------------------
    // The widget under the menu and over the status bar. It has no layout
    // yet: the tree, the tabs, the grids and the option panel go here.
    QWidget* centralArea() const { return CentralArea; }

    // ---- Controls of the sheet and the pipe type ----------------------------
    TGradPan* velmoraEmblem = nullptr;
    QLabel* Label11 = nullptr; // "Ostrel"
    QLabel* Label9 = nullptr;  // "Qorvale"
    QLabel* ReleaseLabel = nullptr;
    QTreeWidget* TreeView1 = nullptr;
    QSplitter* TreeSplitter = nullptr; // between the tree and the sheet
    QScrollArea* SheetScroll = nullptr;

    // The group "管種名".
    TEditCombo* GOODSBOX = nullptr;
    TEditCombo* ComboBox4 = nullptr;
    TEditCombo* ComboBox5 = nullptr;
    TEditCombo* ci = nullptr;
    TToggleSwitch* CheckBox1 = nullptr;
    QPushButton* Button2 = nullptr; // サイズ設定
    QPushButton* Button3 = nullptr; // 標準歩掛選択
    // The group "材料単価建物/ページ".
    QLineEdit* StaticText1 = nullptr;
    QLineEdit* StaticText2 = nullptr;
    QPushButton* Button1 = nullptr; // 登　録

    QTabBar* TabControl1 = nullptr;
    QWidget* Panel5 = nullptr;
    QLabel* Label1 = nullptr; // over StrColGrid2
    QLabel* Label2 = nullptr; // over StrColGrid1
    TStrColGrid* StrColGrid1 = nullptr;
    TStrColGrid* StrColGrid2 = nullptr;

    // The options of the pipe type.
    TRadioGroup* SBorRadio1 = nullptr;   // モード
    TRadioGroup* Scalc_opt1 = nullptr;   // その他の計算方法
    TRadioGroup* SBorRadio4 = nullptr;   // 各要素単位の計算処理
    TRadioGroup* SBorRadio8 = nullptr;   // 小数以下処理
    TRadioGroup* SBorRadio14 = nullptr;  // 採用有効桁設定[提出]
    TRadioGroup* SBorRadio11 = nullptr;  // 有効桁以下
    TFixedList* ComboBox1 = nullptr;     // 単価計算処理: digits
    TFixedList* ComboBox3 = nullptr;     // 単価計算処理: fraction
    TCheckBox* CheckGroupBox1 = nullptr; // 単価に掛率を使用
    TNumberEdit* avr_1 = nullptr;
    TNumberEdit* avr_N = nullptr;
    TNumberEdit* GpayDay1 = nullptr;
    TNumberEdit* GpayDay_N = nullptr;
    TRadioGroup* stylegr = nullptr; // 印刷スタイル選択

    // Set while ShowPipeType fills the controls.
    bool Refreshing = false;
    // The remembered cells of the grids (column, row).
    int Grid1Col = 4, Grid1Row = 1;
    int Grid2Col = 4, Grid2Row = 1;

    // ---- The tree ---------------------------------------------------------
    // Node by absolute index (group g is (g-1) x 21, its pipe type k is
    // (g-1) x 21 + k), and the index of a node.
    QTreeWidgetItem* TreeNode(int absoluteIndex) const;
    int AbsoluteIndex(QTreeWidgetItem* node) const;
    QTreeWidgetItem* SelectedNode() const;

    // ---- The screen logic -------------------------------------------------
    void ClearSheet();
    void ShowPipeType();
    void ApplyControls();
    // Rows 1 to 59 calculated; the lines of the current tab and the prices
    // shown.
    void RecalcAndShowTab();
    void TakeSelection();
    void FillGroupNodes(int g);
    void LoadGroupNames();
    void SaveGroupNames();
    void ShowGridRow(int r);
    void ShowPriceCells(int r);
    void MarkRow(int g);
    void SetupSheet();
    void SetGrid1Headings(bool refrigerant, bool longForm);
    int CurrentTab() const;
    // The rows shown on the current tab start after this row.
    int TabBase() const { return CurrentTab() * 15; }

    // Cell entry (the remembered cells are Grid1Col/Grid1Row, Grid2Col/Grid2Row).
    void StrColGrid1SelectCell(int col, int row, bool& canSelect);
    void StrColGrid2SelectCell(int col, int row, bool& canSelect);
    void StrColGrid2SetEditText(int col, int row, const QString& value);
    void StrColGrid1KeyDown(int& key, unsigned shift);
    void StrColGrid2KeyDown(int& key, unsigned shift);
    // The factor columns accept entry only while they show factors.
    void UpdateGrid1Editing();
    void ActionSizeSetExecute();

    void TreeView1Click();
    void TreeView1MouseUp();
    void TabControl1Change();
    void StrColGrid1Click();
    void StrColGrid2Click();
    void GOODSBOXKeyPress(int key, bool& handled);
    void Button1Click();
    void N1Click();
    void FormResize();

    // The steps of opening and closing.
    void FormShow();
    // Where the window goes when no geometry was saved.
    QRect DefaultGeometry() const;
    // False when the close is to be refused (see closeEvent).
    bool FormCloseQuery();
    // Rows that could not be saved at closing: the user tries again, stays,
    // or closes without them. True when the window may close.
    bool CloseWithUnsavedRows(const QString& heading);
    // How a save of the pipe type on the sheet ended: written, not written
    // (the failure has been shown, the rows stay unsaved), or not written by
    // the user's choice after a change made elsewhere (the rows on the sheet
    // are the user's unsaved ones, or the stored ones read again).
    enum class SaveResult { Saved, Failed, Declined };
    // SavePipeType of the pipe type on the sheet; refused while no pipe type
    // is loaded. When the stored rows were changed elsewhere after the load,
    // asks whether to write over them, read them again, or keep the rows.
    SaveResult SaveCurrentPipeType(int showMessage);
    // Loads the pipe type that select (nothing: the one on the sheet) makes
    // current and shows it; false after a failure, which has been shown and
    // left everything as it was.
    bool LoadAndShow(const std::function<void()>& select);
    // True once a pipe type is loaded; else says so, ending with refusal.
    bool RowsAreLoaded(const QString& refusal);
    void FormClose();
    void ReadDisplayFile();
    void SetTreeViewWidth(int width);
    void WriteDisplayFile();
    // Asks to save a changed pipe type; saves on yes. Saved also when nothing
    // needed saving or the user said no.
    SaveResult AskToSave();
    // The tree node of the pipe type on the sheet, and a selection change
    // that fires no click.
    QTreeWidgetItem* CurrentPipeTypeNode() const;
    void SelectNodeQuietly(QTreeWidgetItem* node);
    // After the tree has handled a key or a mouse button: a selection moved
    // without a click loads like a click; namingNode, the node a release with
    // Shift came on, is then named.
    void AfterTreeInput(QTreeWidgetItem* namingNode);

    // ---- Handlers ---------------------------------------------------------
    void FormCreate(const QString& launchString);
    void ActionRelaseVersionExecute();
    void N28Click();
    void N31Click();
    void FileExit1Execute();
    void tree_listClick();
    void status_barClick();
    // Shared by the ten naming items; the group is the Tag of the sender.
    void N53Click();
    void NameGroup(int tag);

    // ---- Print hand-off (src/output/utankaregist_print.cpp) ---------------
    // Enables ActionPrint and joins it to ActionPrintExecute; called as the
    // form is built.
    void SetupPrintAction();
    // "印  刷": writes the three hand-off files under DataRoot/printdata and
    // starts the print program without waiting.
    void ActionPrintExecute();

    // Makes the menu item follow the action and run it.
    static void BindAction(QAction* item, QAction* action);

    // ---- The standard labour library (src/edit/utankaregist_library.cpp) ----
    // Enables and joins ActionSaveParts and ActionLoadparts; run at construction.
    void SetupLibraryCommands();
    void ActionSavePartsExecute();
    void ActionLoadpartsExecute();

    // ---- Edit commands: copy and paste, moving, clearing, undo (src/edit) ----
    // Enables the commands and joins them to their menu items.
    void ConnectEditCommands();
    QAction* N15 = nullptr; // separator of item_copy_2 and item_paste_2, hidden
    void all_copy_1Click();
    void all_copy_2Click();
    void all_copy_3Click();
    void all_copy_4Click();
    void all_paste_1Click();
    void all_paste_2Click();
    void all_paste_3Click();
    void all_paste_4Click();
    void item_copy_1Click();
    void item_copy_2Click();
    void item_copy_3Click();
    void item_copy_4Click();
    void item_copy_5Click();
    void item_paste_1Click();
    void item_paste_2Click();
    void item_paste_3Click();
    void item_paste_4Click();
    void item_paste_5Click();
    void ActionUndoExecute();
    void ActionMoveUpExecute();
    void ActionMoveDownExecute();
    void N22Click();
    void N33Click();
    // The eight paste items, in the order all_paste_1..4, item_paste_1..4.
    std::array<QAction*, 8> PasteItems() const;
    // The paste item of the last copy enabled, the other seven disabled.
    void EnableOnlyPaste(QAction* paste);
    // Moves the pipe type on the sheet by d (-1 up, +1 down) in its group.
    void MovePipeType(int d);
    // The end of every paste: the rows to the screen, the node's name, undo.
    void FinishPaste(bool renameNode);
    // ---- Outputs (src/output/utankaregist_output.cpp) ---------------------
    // Joins and enables the items of "外部データ入出力(&O)"; called at construction.
    void ConnectOutputs();
    // The pipe type on screen as text: 0 CSV file, 1 clipboard, 2 the data
    // file of the print hand-off (no dialog, no message).
    void ExportRows(int mode);
    // The captions of TabControl1, in order.
    QStringList TabCaptions() const;
    void CSV1Click();
    void N19Click();
    // "エクセル出力": the saved group as a workbook, opened on the desktop.
    void ActionExcelOutExecute();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildSheet();
    QWidget* buildNameBox();
    QWidget* buildOptions();
    void connectSheet();
    // The filter both grids share; true when the key commits.
    bool GridKeyCommits(TStrColGrid* grid, int key);
    void CommitGrid1(int key, bool shiftDown);
    void CommitGrid2(int key);
    void treeClickSteps();
    bool shown_ = false;
    bool settingTabs_ = false;
    bool treeClickRunning_ = false;
    // The node the last tree click went to.
    QTreeWidgetItem* lastTreeNode_ = nullptr;
    std::function<void()> pendingTreeInput_;
    void buildMenu();
    void buildStatusBar();
    QAction* addItem(QMenu* menu, const char* name, const QString& caption);
    QAction* addSeparator(QMenu* menu, const char* name = nullptr);
    QAction* makeAction(const char* name, const QString& caption);

    QWidget* CentralArea = nullptr;
    std::array<QLabel*, StatusPanelCount> statusPanels{};

    // ---- Group rewrites (utankaregist_group.cpp) ---------------------------
public:
    // The execute handlers of ActionOptionChange and Actionwdatachange.
    void ActionOptionChangeExecute();
    void ActionwdatachangeExecute();
    // Recalculates and saves the 20 pipe types of CurrentGrp on a worker
    // thread; kind shows in the progress text. The form stays closed to the
    // user until "終了しました。" has been shown.
    void alldataCalc(int kind);
    // True from the start of a run until its end has been shown.
    bool GroupRewriteRunning() const { return groupRunning_; }
    // Serves events until the run has ended and its thread is gone; at once
    // when none runs.
    void WaitForGroupRewrite();
    // The modal progress window of a run; null before the first run.
    QDialog* GroupProgressWindow() const { return groupProgress_; }

private:
    // Joins the two commands to their actions and menu items.
    void connectGroupRewrites();
    void showGroupProgress(const QString& text, int step);
    void endGroupRewrite(const QString& caption, std::exception_ptr failure);
    bool groupRunning_ = false;
    bool closeAfterGroupRewrite_ = false; // a close came during the run
    QThread* groupThread_ = nullptr;
    QDialog* groupProgress_ = nullptr;
    QElapsedTimer groupProgressShown_; // when the progress window last changed
    QPointer<QWidget> groupFocus_;
};

// The program file's folder, as the install folder check shows it.
QString InstallFolder();
// The calculator program found on this system; empty when there is none.
QString CalculatorProgram();
