#pragma once
// The window's main menu and the tree's pop-up menu: every item, and the
// named commands (actions) that items, buttons and keys share. An item bound
// to an action follows its enabled and visible state and runs it. The menus
// are built here; the window and the command classes join the items to
// their work.

#include <array>

class QAction;
class QMainWindow;
class QMenu;

// Commands that more than one item, button or key runs.
struct WindowActions {
    QAction* aboutAction = nullptr;
    QAction* printAction = nullptr;
    QAction* exitAction = nullptr;
    QAction* undoAction = nullptr; // Esc on the window
    QAction* loadLibraryAction = nullptr;
    QAction* labourCostChangeAction = nullptr;
    QAction* optionChangeAction = nullptr;
    QAction* moveUpAction = nullptr;
    QAction* moveDownAction = nullptr;
    QAction* saveLibraryAction = nullptr;
    QAction* excelOutAction = nullptr;
    QAction* sizeSetAction = nullptr;
};

// "ファイル(&F)"
struct FileMenu {
    QMenu* menu = nullptr;
    QAction* aboutItem = nullptr;         // このソフトウェアについて
    QAction* installFolderItem = nullptr; // インストールフォルダー確認
    QAction* calculatorItem = nullptr;    // 電卓
    QAction* saveItem = nullptr;          // 保  存, Ctrl+S
    QAction* printItem = nullptr;         // 印  刷
    QAction* separator = nullptr;         // shown by the show step
    QAction* exitItem = nullptr;          // 終了(&X)
};

// "表  示(&D)"
struct ViewMenu {
    QMenu* menu = nullptr;
    QAction* treeListItem = nullptr;
    QAction* statusBarItem = nullptr;
};

// "管種名称編集(&P)": one sub-menu per group, its title the group name, with
// a naming item whose data (tag) is the group index 0 to 9.
struct GroupNamesMenu {
    QMenu* menu = nullptr;
    std::array<QMenu*, 10> groups{};
    std::array<QAction*, 10> namingItems{};
};

// "編 集1(&E)"
struct EditMenu {
    QMenu* menu = nullptr;
    QAction* undoItem = nullptr;          // 取消, Ctrl+Z
    QAction* labourLibraryItem = nullptr; // 標準歩掛選択
    QAction* labourCostChangeItem = nullptr; // グループ内の基礎工費を、表示中のものに変更
    QAction* optionChangeItem = nullptr; // グループ内の計算オプションを、表示中のものに変更
    QAction* moveUpItem = nullptr;        // ↑上へ移動
    QAction* moveDownItem = nullptr;      // ↓下へ移動
    QAction* currentPricesItem = nullptr; // 現在の管材単価計算 (no command)
    QAction* separator = nullptr;         // shown by the show step
    QAction* copyWholeTableItem = nullptr;
    QAction* copyPricesItem = nullptr;
    QAction* copyAllFactorsItem = nullptr;
    QAction* copyLabourFactorsItem = nullptr;
    QAction* pasteWholeTableItem = nullptr;
    QAction* pastePricesItem = nullptr;
    QAction* pasteAllFactorsItem = nullptr;
    QAction* pasteLabourFactorsItem = nullptr;
    QAction* saveLibraryItem = nullptr;
    QAction* clearPipeTypeItem = nullptr; // 管材をクリアー
};

// "細目編集(&B)"
struct DetailMenu {
    QMenu* menu = nullptr;
    QAction* copyDetailItem = nullptr;
    QAction* copyDetailPricesItem = nullptr;
    QAction* copyDetailFactorsItem = nullptr;
    QAction* copyDetailLabourItem = nullptr;
    QAction* copyDetailPricesAcrossItem = nullptr;
    QAction* pasteDetailItem = nullptr;
    QAction* pasteDetailPricesItem = nullptr;
    QAction* pasteDetailFactorsItem = nullptr;
    QAction* pasteDetailLabourItem = nullptr;
    QAction* copyFirstDetailAcrossItem = nullptr;
    QAction* clearDetailItem = nullptr; // 現在の細目をクリアー
};

// "外部データ入出力(&O)"
struct ExternalDataMenu {
    QMenu* menu = nullptr;
    QAction* excelOutItem = nullptr;
    QAction* csvFileItem = nullptr;
    QAction* clipboardItem = nullptr;
};

// The tree's pop-up menu.
struct TreePopupMenu {
    QMenu* menu = nullptr;
    QAction* popupMoveUpItem = nullptr;   // moveUpAction
    QAction* popupMoveDownItem = nullptr; // moveDownAction
};

class MainMenu {
public:
    // Builds the actions, the window's menu bar and the pop-up menu.
    explicit MainMenu(QMainWindow* window);

    // The names the groups get before the configuration record is read.
    static const std::array<const char*, 10> DefaultGroupNames;
    // Makes the menu item follow the action and run it.
    static void bindAction(QAction* item, QAction* action);

    WindowActions actions;
    FileMenu file;
    ViewMenu view;
    GroupNamesMenu groupNames;
    EditMenu edit;
    DetailMenu detail;
    ExternalDataMenu externalData;
    TreePopupMenu treePopup;
};
