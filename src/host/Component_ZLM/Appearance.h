#pragma once

#include "host/Export.h"

class QApplication;
class QWidget;

/// Sets up the suite's look: right to left, Fusion style with a visible focus, the Persian font
/// (Noto Sans Arabic, else the system's), one size. Called once by the application and by the tests.
KETEBIONPAP_HOST void SetUpAppearance(QApplication &application);
/// Lays a control out right to left.
KETEBIONPAP_HOST void SetWinControlRightAlign(QWidget *control);
