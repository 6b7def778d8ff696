#pragma once

#include "calender/Calender_Mapper.h"
#include "common/DataModule_UNT.h"
#include "host/Export.h"

#include <functional>

/// The database work of the work calendar (table Calender). Dates are texts of fixed width, so they compare in
/// the order of time.
///
/// Operations that return a bool answer false after a database error; all others throw TDatabaseError.
class KETEBIONPAP_CORE TCalender_DM : public TDataModule {
    Q_OBJECT
public:
    explicit TCalender_DM(QObject *owner);

    TQuery *const List_QUR; ///< all days, with the names of weekday and type
    TQuery *const List_DS;  ///< what a grid of the days is bound to
    TQuery *const Get_QUR;  ///< the day under edit
    TQuery *const Temp_QUR; ///< one-off statements

    /// Gives the list its statement; the caller opens it.
    void Calender_Get();
    /// Opens a day and copies it into the record; an unknown ID gives an empty record.
    void Calender_GetByID(const QVariant &id, TCalenderMapper &day);
    /// Leaves open in Temp_QUR the stored days from..to, both ends included.
    void Calender_GetWithDates(const QString &from, const QString &to);
    [[nodiscard]] bool Calender_Insert(const TCalenderMapper &day);
    /// Stores the days in their order, each on its own, until one is refused (false) or `goOn`, called with the number
    /// stored after each, answers false. On the disk when it returns; false, too, when that cannot be had.
    [[nodiscard]] bool Calender_InsertAll(const QList<TCalenderMapper> &days,
                                          const std::function<bool(qsizetype)> &goOn);
    /// Changes title, type and comment of the day that Calender_GetByID opened, never its date or weekday.
    [[nodiscard]] bool Calender_Update(const TCalenderMapper &day);
    /// Deletes days. `ids` parted by commas.
    void Calender_del(const QString &ids);
};

/// The one instance, made and freed by the entry points and screens.
extern KETEBIONPAP_CORE TCalender_DM *Calender_DM;
