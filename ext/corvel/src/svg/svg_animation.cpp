#include "svg/svg_animation.h"
