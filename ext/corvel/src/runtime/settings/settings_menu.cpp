#include "runtime/settings/settings_menu.h"
