#pragma once

#include "host/Declaration_PKG/Specialmessages.h"
#include "host/NewBaseForms_PKG/BaseGet_UNT.h"
#include "host/NewBaseForms_PKG/BoundInputs.h"

/// An editor whose record stands wholly in its inputs. It fills the base's hooks; the screen builds its inputs (through
/// `Inputs`), checks them, and says how its data module reads and writes.
template <class Record>
class TRecordGet : public TBaseGet_FRM {
protected:
    using TBaseGet_FRM::TBaseGet_FRM;

    virtual int NextCode() = 0;
    /// A new record with its defaults.
    virtual Record Fresh(int code) = 0;
    /// True when the record is stored; the row stays open for Write. Throws TDatabaseError.
    virtual bool Read(const QVariant &code, Record &record) = 0;
    /// False after a database error, as data modules answer.
    virtual bool Write(const Record &record, bool isNew) = 0;

    TBoundInputs<Record> Inputs;
    Record Stored; ///< the record as it was loaded; a new one's defaults

    void NewCode() override
    {
        AllotCode([this] { return NextCode(); });
    }
    bool RecordExists() override
    {
        Record found;
        return Read(Identifier(), found);
    }
    void ClearRecord() override
    {
        Stored = Fresh(Identifier().toInt());
        Inputs.show(Stored);
    }
    void LoadRecord() override { Read(Identifier(), Stored); }
    void ShowRecord() override { Inputs.show(Stored); }
    bool SaveRecord() override
    {
        Record typed = Stored;
        Inputs.read(typed);
        if (!Write(typed, Mode() == fmNew)) {
            MSGFinishedNotSuccessfully(QString::fromUtf8("ذخيره سازي "));
            return false;
        }
        MSGCompeletedSuccessfully(QString::fromUtf8("ذخيره سازي "));
        return true;
    }
};
