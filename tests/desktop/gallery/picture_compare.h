#pragma once

#include <QImage>

#include <string>

/// How two pictures differ, in words; empty if they look alike. A channel may be off by a little
/// everywhere, and by more at a few places, where fonts are drawn.
std::string difference(const QImage& actual, const QImage& expected);

/// Compares a picture with tests/desktop/gallery/references/`name`.png and fails the test with a
/// word on where to look. With UPDATE_GALLERY=1 in the environment it becomes the reference.
void expect_like_reference(const QImage& picture, const std::string& name);
