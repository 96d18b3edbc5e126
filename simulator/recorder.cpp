#include "simulator/recorder.h"
