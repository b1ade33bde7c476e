// qlhelper, the pane's helper tool.
//
//   qlhelper PROGRAM ARGUMENTS...    becomes the program; its standard output is passed through
//   qlhelper --session --root DIR    serves the pane over the socket that is its standard input, until that
//                                    is closed; started as root through polkit when the lock is opened
//   qlhelper --version                       says which pane it belongs to
#include "helper/HelperMain.h"

int main(int count, char** vector) { return corvane::helper::helperMain(count, vector); }
