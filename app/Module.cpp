#include "app/Module.h"

#include "Ketebionpap_Interface.h"

#include <QCoreApplication>
#include <QFile>

#include <dlfcn.h>

using namespace Qt::Literals::StringLiterals;

TModule::TModule(const QString &file)
    : m_file(file.isEmpty() ? QCoreApplication::applicationDirPath() + u"/Ketebionpap_ZLM.so"_s : file)
{
}

bool TModule::load()
{
    if (m_library)
        return true;
    m_library = dlopen(QFile::encodeName(m_file).constData(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    m_errorText = m_library ? QString() : u"cannot load the module: "_s + QString::fromLocal8Bit(dlerror());
    return m_library;
}

void *TModule::find(const char *name)
{
    if (!load())
        return nullptr;
    void *function = dlsym(m_library, name);
    m_errorText = function ? QString() : u"%1 does not export %2"_s.arg(m_file, QLatin1String(name));
    return function;
}

bool TModule::has(const TEntryPoint &entry)
{
    return find(entry.name);
}

int TModule::call(const TEntryPoint &entry, const QStringList &arguments, bool *missing)
{
    void *function = find(entry.name);
    if (missing)
        *missing = !function;
    if (!function)
        return 0;
    const auto integer = [&arguments](int place) { return arguments.value(place).toInt(); };
    // A QString's UTF-16 ends with a zero.
    const QString filter = arguments.isEmpty() ? QString() : arguments.last();
    const auto *text = reinterpret_cast<const char16_t *>(filter.utf16());
    // The interface's own declarations say how each export is called.
    switch (entry.arguments) {
    case TEntryPoint::SelectTypeFilter:
        return reinterpret_cast<decltype(&Select_FiscalList)>(function)(integer(0), text);
    case TEntryPoint::KindSelectTypeFilter:
        return reinterpret_cast<decltype(&Select_FiscalDeducation)>(function)(integer(0), integer(1), text);
    case TEntryPoint::None:
        break;
    }
    if (entry.isSelect())
        return reinterpret_cast<decltype(&Select_Staff)>(function)();
    reinterpret_cast<decltype(&Open_StaffList)>(function)();
    return 0;
}
