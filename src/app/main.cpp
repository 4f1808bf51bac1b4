// Qorvale Works 配管材: the program.
#include "platform/application.h"
#include "platform/qtdialogs.h"
#include "shell/programbody.h"

#include <memory>

int main(int argc, char** argv) {
    TApplication app(argc, argv);
    InstallDialogs(std::make_unique<QtDialogs>());
    return ProgramBody(app);
}
