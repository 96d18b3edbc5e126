#include "app/waiting.h"

#include "app/shell.h"

Waiting::Waiting(Shell& shell, const QString& what)
    : shell_(shell), before_(shell.tell_wait(what)) {}

Waiting::~Waiting() {
  shell_.tell_wait(before_);
}
