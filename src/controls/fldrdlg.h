#pragma once
// FolderDialog: the folder picker. execute shows a modal folder dialog
// (Qt's own, the same on every desktop) with Title, starting at RootID;
// a cancelled dialog returns false and changes nothing, a choice sets
// folderName (at most 260 characters, native separators) and returns true.
//
// BrowseCallBackProc, if set, is called with BFFM_INITIALIZED once the
// dialog is up and with BFFM_SELCHANGED and the folder on each change of
// the current folder, each time with param.

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
unsigned folderDlgFlags(FolderDialogOptions options);

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

    QString title() const { return m_title; }
    void setTitle(const QString& value) { m_title = value; }
    FolderDialogOptions option() const { return m_options; }
    void setOption(FolderDialogOptions value) { m_options = value; }
    // The folder the tree starts at (write-only in use).
    void setRootId(const QString& value) { m_rootID = value; }
    void setBrowseCallBackProc(FolderBrowseCallback value) {
        m_browseCallBackProc = std::move(value);
    }
    std::intptr_t param() const { return m_param; }
    void setParam(std::intptr_t value) { m_param = value; }
    int image() const { return m_image; }
    QString folderName() const { return m_folderName; }

    bool execute();

private:
    QString m_rootID;
    QString m_title;
    FolderDialogOptions m_options = 1u << bifReturnOnlyFSDirs;
    FolderBrowseCallback m_browseCallBackProc;
    std::intptr_t m_param = 0;
    int m_image = 0;
    QString m_folderName;
};
