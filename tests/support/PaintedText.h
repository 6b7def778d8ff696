#pragma once

#include <QString>

class QWidget;

/// What a widget writes on itself when it is painted, letter by letter as its texts were given, the pieces of a
/// right-to-left line in reading order. For widgets that paint one line of right-to-left text.
QString paintedText(QWidget *widget);
