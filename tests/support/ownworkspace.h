#pragma once
// A workspace of its own, for tests of the rows without a window: the
// document, its rows and the connection to its paths' exDatabase.

#include "document/workspace.h"

class OwnWorkspace {
protected:
    Workspace& ws() { return m_workspace; }
    PipeTypeDocument& doc() { return m_workspace.document(); }
    RowTable& rows() { return m_workspace.document().rows(); }

private:
    Workspace m_workspace;
};
