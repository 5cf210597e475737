#pragma once

#include <functional>

class QWidget;

namespace Corvel {

/// If CORVEL_SHOT is set: after CORVEL_SHOT_DELAY milliseconds saves a picture of `window` there;
/// then, if CORVEL_SHOT2 is set, performs the steps of CORVEL_CLICK, saves a second picture, one
/// more of every other visible window (".win0.png", ".win1.png", ...), and quits.
///
/// A step is "path" (a press) or "path=value" (a text for a line edit). A path is made of object
/// names joined by "/"; a name that ends in "*" matches by what stands before it.
/// `finish` makes what the window has not made yet: a step whose target is not there asks for it.
void arm_screenshot_run(QWidget* window, std::function<void()> finish);

} // namespace Corvel
