#include "views/frmdisplay.h"

frmdisplay::frmdisplay(Shell&) {
  setObjectName(QStringLiteral("frmdisplay"));
  setWindowTitle(QStringLiteral("Historical Data"));
}

void frmdisplay::cmd_Click(int) {}
void frmdisplay::cmd2_Click() {}
void frmdisplay::Cmd6_Click() {}
void frmdisplay::RedrawGraph() {}
