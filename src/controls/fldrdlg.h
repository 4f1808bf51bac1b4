#pragma once
// FolderDialog: the folder picker. Execute shows a modal folder dialog
// (Qt's own, the same on every desktop) with Title, starting at RootID;
// a cancelled dialog returns false and changes nothing, a choice sets
// FolderName (at most 260 characters, native separators) and returns true.
//
// BrowseCallBackProc, if set, is called with BFFM_INITIALIZED once the
// dialog is up and with BFFM_SELCHANGED and the folder on each change of
// the current folder, each time with Param.

#include <QObject>
#include <QString>

#include <cstdint>
#include <functional>

class QWidget;

enum FolderDialogOption {
    bifBrowseForComputer,
    bifBrowseForPrinter,
    bifDontGoBelowDomain,
    bifReturnFSAncestors,
    bifReturnOnlyFSDirs,
    bifStatusText
};
// A set of FolderDialogOption as bits (1 << option).
using FolderDialogOptions = unsigned;
// The browse flags of the options, as the desktop's folder picker has them.
unsigned FolderDlgFlags(FolderDialogOptions options);

constexpr unsigned BFFM_INITIALIZED = 1;
constexpr unsigned BFFM_SELCHANGED = 2;
using FolderBrowseCallback =
    std::function<int(QWidget* Wnd, unsigned uMsg, const QString& Folder, std::intptr_t lpData)>;

class FolderDialog : public QObject {
    Q_OBJECT
public:
    // The owner widget, if any, is the dialog's parent window.
    explicit FolderDialog(QObject* owner = nullptr);
    ~FolderDialog() override;

    QString Title() const { return FTitle; }
    void SetTitle(const QString& value) { FTitle = value; }
    FolderDialogOptions Option() const { return FOptions; }
    void SetOption(FolderDialogOptions value) { FOptions = value; }
    // The folder the tree starts at (write-only in use).
    void SetRootID(const QString& value) { FRootID = value; }
    void SetBrowseCallBackProc(FolderBrowseCallback value) {
        FBrowseCallBackProc = std::move(value);
    }
    std::intptr_t Param() const { return FParam; }
    void SetParam(std::intptr_t value) { FParam = value; }
    int Image() const { return FImage; }
    QString FolderName() const { return FFolderName; }

    bool Execute();

private:
    QString FRootID;
    QString FTitle;
    FolderDialogOptions FOptions = 1u << bifReturnOnlyFSDirs;
    FolderBrowseCallback FBrowseCallBackProc;
    std::intptr_t FParam = 0;
    int FImage = 0;
    QString FFolderName;
};
