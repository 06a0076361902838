#pragma once
// Theme: the light and the dark palette, the fonts, and the change between them at run time.

#include <QPalette>

#include "platform/forms/Application.h"
#include "platform/forms/Internal.h"

class QApplication;

namespace kv {

/// Style, font and palette of the whole program.
void dressApplication(QApplication& application);
/// Dark or light from now on; everything shown repaints.
void applyTheme(bool dark);
/// What the desktop had before we dressed.
bool desktopIsDark();

}  // namespace kv
