#include "site/favicon/generate_favicons.h"
