#pragma once

#include "site/new_project.h"
#include "site/new_site.h"
#include "site/promotion.h"
#include "site/registry.h"
#include "site/slug.h"
