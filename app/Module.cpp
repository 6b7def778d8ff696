#include "app/Module.h"

#include "Ketebionpap_Interface.h"

#include <QCoreApplication>

TModule::TModule(const QString &file)
    : m_library(file.isEmpty()
                    ? QCoreApplication::applicationDirPath() + QStringLiteral("/Ketebionpap_ZLM.so")
                    : file)
{
    m_library.setLoadHints(QLibrary::ResolveAllSymbolsHint | QLibrary::PreventUnloadHint);
}

bool TModule::load()
{
    return m_library.load();
}

QString TModule::errorText() const
{
    return m_library.isLoaded() ? m_library.fileName() + QStringLiteral(" does not export this entry point")
                                : m_library.errorString();
}

bool TModule::has(const TEntryPoint &entry)
{
    return load() && m_library.resolve(entry.name);
}

int TModule::call(const TEntryPoint &entry, const QStringList &arguments, bool *missing)
{
    const QFunctionPointer function = load() ? m_library.resolve(entry.name) : nullptr;
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
