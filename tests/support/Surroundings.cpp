#include "support/Surroundings.h"

#include <QLocale>

#include <clocale>
#include <cstring>
#include <langinfo.h>

Surroundings::Surroundings()
{
    std::setlocale(LC_ALL, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) { // some drivers turn wide texts into the locale's
        qputenv("LC_ALL", "C.UTF-8");
        std::setlocale(LC_ALL, "");
    }
    for (const char *folder : {"XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        qputenv(folder, m_folders.path().toUtf8());
    QLocale::setDefault(QLocale::c());
}
