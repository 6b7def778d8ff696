#pragma once

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Export.h"
#include "host/database/Query.h"
#include "host/database/Transaction.h"

#include <QCoreApplication>

/// Makes the data module of a variable; one that is there already is used again. It belongs to the application, and its
/// end clears the variable. True: it was made.
template <class Module>
bool MakeDataModule(Module *&variable)
{
    if (variable)
        return false;
    variable = new Module(QCoreApplication::instance());
    QObject::connect(variable, &QObject::destroyed, [&variable] { variable = nullptr; });
    return true;
}

template <class Module>
void FreeDataModule(Module *&variable)
{
    delete variable;
    variable = nullptr;
}

/// Holds the data module of a variable for a screen: the first holder makes it, the last one frees it. One that somebody
/// else made stays his, unless the screens take it over: then the last holder frees that one, too.
template <class Module>
class TDataModuleHolder {
public:
    enum TOthers { Stay, TakenOver };
    explicit TDataModuleHolder(Module *&variable, TOthers others = Stay)
        : m_variable(variable), m_counts(MakeDataModule(variable) || held() > 0 || others == TakenOver)
    {
        held() += m_counts;
    }
    ~TDataModuleHolder()
    {
        if (m_counts && --held() == 0)
            FreeDataModule(m_variable);
    }
    Q_DISABLE_COPY_MOVE(TDataModuleHolder)

private:
    static int &held()
    {
        static int count = 0;
        return count;
    }
    Module *&m_variable;
    bool m_counts;
};

/// The common shape of all data modules: queries on the host's connection, and writes that answer true or false.
class KETEBIONPAP_CORE TDataModule : public QObject {
    Q_OBJECT
public:
    explicit TDataModule(QObject *owner);

protected:
    TQuery *NewQuery(const QString &name);

    /// Runs a write; a database error is kept in the connection's lastError and answers false.
    template <class Work>
    [[nodiscard]] static bool Try(Work work)
    {
        try {
            work();
            return true;
        } catch (const TDatabaseError &error) {
            DM.ADOConnection1->noteError(error);
            return false;
        }
    }

    /// Fills a row under append or edit and posts it; a refused row is cancelled, and false is the answer.
    template <class Fill>
    [[nodiscard]] static bool Post(TQuery *query, bool newRow, Fill fill)
    {
        return Try([&] {
            if (newRow)
                query->append();
            else
                query->edit();
            try {
                fill();
                query->post();
            } catch (...) {
                query->cancel();
                throw;
            }
        });
    }
};
