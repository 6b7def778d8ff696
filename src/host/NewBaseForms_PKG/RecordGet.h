#pragma once

#include "host/Declaration_PKG/Specialmessages.h"
#include "host/NewBaseForms_PKG/BaseGet_UNT.h"
#include "host/NewBaseForms_PKG/BoundInputs.h"

/// What the data module of an editor does for its record. All throw TDatabaseError.
template <class Record>
struct TRecordStore {
    /// The code that a new record is offered; empty: the database gives rows their identifier, or there are no new ones.
    std::function<int()> newCode = {};
    std::function<Record(int code)> fresh = {}; ///< a new record with its defaults
    /// True when the record is stored; its row stays open for `write`.
    std::function<bool(const QVariant &identifier, Record &record)> read = {};
    /// False after a database error, as data modules answer.
    std::function<bool(const Record &record, bool isNew)> write = {};
    bool readAgain =
        false; ///< before `write`, which works on the row that is open: other reading goes on meanwhile
};

/// How a save is told; its words are those that users of the screen know.
struct TSaveWords {
    QString failed = QString::fromUtf8("ذخيره سازي ");
    QString failedMore = QString::fromUtf8("ذخيره سازي");
    QString done = QString::fromUtf8("ذخيره سازي "); ///< empty: a save that went well is not told
};

/// An editor of one kind of record, on the base of record editors or on that of detail rows. It fills the base's hooks from
/// what the screen gives it when it is built: the store, and the inputs that are bound to the record. A screen whose
/// inputs are more than that fills ClearRecord, ShowRecord and Typed by itself.
template <class Record, class Base = TBaseGet_FRM>
class TRecordGet : public Base {
protected:
    using Base::Base;

    TRecordStore<Record> Store;
    TSaveWords SaveWords;
    TBoundInputs<Record> Inputs; ///< made from the record's fields (MakeInputs)
    Record Stored{};             ///< as it was loaded; a new one's defaults
    std::optional<Record> Sent;  ///< by the last save of this record

    /// Makes the inputs of the record's fields; a screen that looks for them by name makes them first.
    const TBoundInputs<Record> &MakeInputs(std::span<const TField<Record>> fields)
    {
        Inputs = {fields, this};
        return Inputs;
    }
    /// The record as it stands in the inputs.
    virtual Record Typed() const
    {
        Record typed = Stored;
        Inputs.read(typed);
        return typed;
    }

    void NewCode() override
    {
        Sent.reset();
        if (Store.newCode)
            this->AllotCode(Store.newCode);
    }
    bool RecordExists() override
    {
        Record found{};
        return Store.read(this->Identifier(), found);
    }
    void ClearRecord() override
    {
        Stored = Store.fresh(this->Identifier().toInt());
        Inputs.show(Stored);
    }
    void LoadRecord() override { Store.read(this->Identifier(), Stored); }
    void ShowRecord() override { Inputs.show(Stored); }
    bool SaveRecord() override
    {
        if (Store.readAgain)
            LoadRecord();
        Sent = Typed();
        const bool isNew = this->Mode() == fmNew;
        const bool saved = Base::Written([&] { return Store.write(*Sent, isNew); });
        if (!saved)
            MSGFinishedNotSuccessfully(SaveWords.failed, SaveWords.failedMore);
        else if (!SaveWords.done.isEmpty())
            MSGCompeletedSuccessfully(SaveWords.done);
        return saved;
    }
};
