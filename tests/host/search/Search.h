#pragma once

#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include "host/ZelmoSearch/ZelmoSearchManager.h"
#include "host/database/Query.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

/// A list of words, and the search over it.
class Search : public testing::Test {
protected:
    Search() : list(&db.connection(), "List_QUR"), manager(&list, nullptr)
    {
        db.run(
            "create table Word(Code integer not null primary key, Title nvarchar(100), Cost float, Day nvarchar(10))");
        list.setKeyField("Code");
        manager.SetSQLScript(TStatement("select * from Word"));
        manager.SetItems({code, title, cost, day});
    }
    void add(int code, const QString &title, double cost = 0, const QString &day = {})
    {
        db.connection().execute(TStatement("insert into Word(Code, Title, Cost, Day) values(")
                                    .integer(code)
                                    .sql(", ")
                                    .text(title)
                                    .sql(", ")
                                    .amount(cost)
                                    .sql(", ")
                                    .text(day)
                                    .sql(")"));
    }
    QString codes()
    {
        QStringList found;
        for (int row = 0; row < list.recordCount(); ++row)
            found << QString::number(list.keyAt(row));
        return found.join(",");
    }
    /// The codes of the rows that a typed text finds.
    QString found(const TSearchItem &item, const QString &text)
    {
        manager.SetCondition("general", TZelmoSearchManager::ConditionFor(item, text));
        manager.ExecuteFilter_DataSet();
        return codes();
    }

    TestDatabase db;
    ScriptedMessages messages;
    const TSearchItem code{"Code", u"کد"_s, TSearchItem::Digits};
    const TSearchItem title{"Title", u"عنوان"_s, TSearchItem::Text, true};
    const TSearchItem cost{"Cost", u"مبلغ"_s, TSearchItem::Money};
    const TSearchItem day{"Day", u"تاریخ"_s, TSearchItem::Date};
    TQuery list;
    TZelmoSearchManager manager;
};
