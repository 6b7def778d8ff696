#pragma once

#include "app/EntryPoints.h"

/// The payroll module, loaded by name at run time and called by its exports' names.
class TModule {
public:
    /// `file`: the library; empty: Ketebionpap_ZLM beside the program.
    explicit TModule(const QString &file = {});

    /// False when the library cannot be loaded; errorText() says why, in English. It stays loaded until the process ends: data
    /// modules live on in it between calls.
    bool load();
    const QString &errorText() const { return m_errorText; }
    /// Whether the module has this export.
    bool has(const TEntryPoint &entry);
    /// Runs an entry point and answers its result (0 for those without one). The arguments are as
    /// EntryPoints::check wants them. When the library or the export is missing, `missing` becomes true.
    int call(const TEntryPoint &entry, const QStringList &arguments, bool *missing = nullptr);

private:
    void *find(const char *name);
    QString m_file;
    void *m_library = nullptr;
    QString m_errorText;
};
