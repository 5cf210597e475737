#include "site/json_file.h"
