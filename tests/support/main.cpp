#include "host/Component_ZLM/Appearance.h"
#include "host/NewBaseForms_PKG/HostWindows_UNT.h"

#include <QApplication>
#include <QLocale>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <clocale>
#include <cstring>
#include <langinfo.h>

// The same surroundings on every machine: no display, UTF-8, folders of the run's own, one look.
int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    std::setlocale(LC_ALL, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) { // some drivers turn wide texts into the locale's
        qputenv("LC_ALL", "C.UTF-8");
        std::setlocale(LC_ALL, "");
    }
    QTemporaryDir configuration;
    qputenv("XDG_RUNTIME_DIR", configuration.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", configuration.path().toUtf8());
    qputenv("XDG_DATA_HOME", configuration.path().toUtf8());
    QLocale::setDefault(QLocale::c());
    QApplication application(argc, argv);
    QApplication::setApplicationName("ketebionpap");
    SetUpAppearance(application);
    SetUpHostWindows();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
