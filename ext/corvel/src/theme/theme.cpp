#include "theme/theme.h"
