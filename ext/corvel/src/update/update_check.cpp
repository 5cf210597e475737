#include "update/update_check.h"
