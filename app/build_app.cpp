#include "runtime/desktop_app.h"
