#include "runtime/corvel_app.h"
