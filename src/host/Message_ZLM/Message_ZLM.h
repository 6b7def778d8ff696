#pragma once

#include "host/Declaration_PKG/MessageCatalogue.h"
#include "host/Export.h"

#include <QColor>
#include <QString>

class QWidget;

/// Shows a text as a balloon beside the input that caused it, without stopping work and without taking the
/// focus. Goes after `displayTime` ms, on the next key, or when the input goes. Sent through MessageService.
KETEBIONPAP_HOST void ShowTooltipMessage(const QString &text, QWidget *control, int displayTime = noteTime,
                                         int icon = 4, const QColor &color = QColor(192, 192, 192),
                                         int unused = 0, int width = 250);
