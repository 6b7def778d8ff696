#pragma once

#include "host/Declaration_PKG/Softwareparts_unt.h"
#include "host/Export.h"

#include <QList>
#include <QString>
#include <QStringList>

class QWidget;

/// Rows of one record that an editor of this workstation left behind.
struct TLeftRows {
    QString code;
    int rows = 0;
};

/// What the user is asked when an editor finds rows that were left behind.
struct TRecoveryRequest {
    QString title;           ///< the editor's title
    bool newRecord = true;   ///< false: the rows belong to the record that is being opened
    QString newCode;         ///< the code that rows are taken up under, new records only
    QList<TLeftRows> left;   ///< at least one entry, codes distinct
    bool allOffered = false; ///< whether all that was left behind may be thrown away at once
};

struct TRecoveryChoice {
    enum Action {
        TakeUp,     ///< the chosen codes' rows go into the record that is opening
        Discard,    ///< the chosen codes' rows are thrown away
        DiscardAll, ///< everything left behind in this part by this workstation is thrown away
        Later       ///< everything stays as it is
    };
    Action action = Later;
    QStringList codes;
};

/// Who answers the question: a dialog in the program, a script in tests.
class KETEBIONPAP_HOST TRecoveryChooser {
public:
    virtual ~TRecoveryChooser();
    virtual TRecoveryChoice choose(const TRecoveryRequest &request, QWidget *form) = 0;
};
/// The chooser in force; never null.
KETEBIONPAP_HOST TRecoveryChooser &RecoveryChooser();
/// Sets the chooser in force; null returns to the dialog. The caller keeps ownership.
KETEBIONPAP_HOST void SetRecoveryChooser(TRecoveryChooser *chooser);
