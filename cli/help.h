// The texts of --help.
#pragma once

#include <QString>

struct Command;

QString help_of_all();
QString help_of(const Command& command);
