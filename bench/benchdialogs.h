#pragma once
// The dialogs of the benchmarks: scripted, so that no box waits for a person.
// One for the whole run, left to the end of the process.
#include "platform/scripteddialogs.h"

inline ScriptedDialogs& benchDialogs() {
    static auto* dialogs = new ScriptedDialogs;
    return *dialogs;
}
