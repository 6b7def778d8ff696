#include "host/Component_ZLM/Appearance.h"

#include <QApplication>
#include <QLocale>
#include <QTemporaryDir>

#include <gtest/gtest.h>

// The same surroundings on every machine: no display, a configuration folder of the run's own, one look.
int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir configuration;
    qputenv("XDG_CONFIG_HOME", configuration.path().toUtf8());
    qputenv("XDG_DATA_HOME", configuration.path().toUtf8());
    QLocale::setDefault(QLocale::c());
    QApplication application(argc, argv);
    QApplication::setApplicationName("ketebionpap");
    SetUpAppearance(application);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
