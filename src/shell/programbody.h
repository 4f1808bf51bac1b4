#pragma once
// The program body: style, title, the main form and the dialogs made at
// start, and the message loop.

class Application;

// Runs the program on an application object whose dialogs are set. Gives the exit code, 0.
int programBody(Application& app);
