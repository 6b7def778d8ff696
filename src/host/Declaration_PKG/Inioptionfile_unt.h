#pragma once

#include "host/Export.h"

#include <QString>

/// The workstation's options, kept in an ini file private to the user.
struct KETEBIONPAP_CORE TIniOptions {
    int Com_Index = 1; ///< the workstation's index, unique in the database, 1-based
    bool IsNew = true; ///< the file held no index: the workstation is to be registered
    QString FileName;  ///< where load() read and save() writes; remembered layouts live beside it

    /// Reads the file; a missing or broken one leaves the defaults. `fileName` empty: the user's
    /// configuration folder ($XDG_CONFIG_HOME/ketebionpap/ketebionpap.ini).
    void load(const QString &fileName = {});
    /// Writes the file, readable by the user only. False when it cannot be written.
    bool save() const;
};
extern KETEBIONPAP_CORE TIniOptions IniOptions;
