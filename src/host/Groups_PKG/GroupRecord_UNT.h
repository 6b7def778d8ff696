#pragma once

#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/Export.h"
#include "host/database/RecordRules.h"

/// The groups of one part: employees, earnings, deductions, persons.
struct TGroupKind {
    TSoftwarePart part; ///< in rights, event log and code locks
    QString table;      ///< columns Code and Name
    const char16_t *listTitle;
    const char16_t *editorTitle;
};
/// The kind for a part's groups, also by the part that is grouped (804 earnings for 816 earning groups). Null when the
/// part has none.
KETEBIONPAP_CORE const TGroupKind *GroupKindOf(TSoftwarePart part);

/// One group.
struct TGroup_Mapper {
    int _Code = 0;
    QString _Name; ///< at most 50 characters are stored, without blanks at its ends
};

/// The fields of a group, in the order in which a save sets their columns.
KETEBIONPAP_CORE std::span<const TField<TGroup_Mapper>> groupFields();

/// What the rules of a group look at. A new one's `loaded` is empty.
struct TGroupSubject : TRecordSubject<TGroup_Mapper> {
    const TGroupKind &kind;
};

/// What must hold of a group of the kind before it is saved, in the order in which the users are told.
KETEBIONPAP_CORE QList<TRule<TGroupSubject>> groupRules(const TGroupKind &kind);
