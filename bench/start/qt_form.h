#pragma once

/// Shows a form of 50 rows written by hand on the toolkit alone (box, label, field, button, icon),
/// and runs the event loop.
int run_qt_form(int argc, char** argv, void (*about_to_show)());
