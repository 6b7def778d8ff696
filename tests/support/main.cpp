#include "host/Component_ZLM/Appearance.h"
#include "host/NewBaseForms_PKG/HostWindows_UNT.h"
#include "support/Surroundings.h"

#include <QApplication>

#include <gtest/gtest.h>

// Windows without a display, with one look.
int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const Surroundings surroundings;
    QApplication application(argc, argv);
    QApplication::setApplicationName("ketebionpap");
    SetUpAppearance(application);
    SetUpHostWindows();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
