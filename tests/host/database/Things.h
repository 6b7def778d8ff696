#pragma once

#include "host/database/Query.h"
#include "support/TestDatabase.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

/// A table of things with lines, and a query on it.
class QueryTest : public testing::Test {
protected:
    QueryTest()
    {
        db.run(
            "create table Thing(Code INT NOT NULL PRIMARY KEY, Title NVARCHAR(5), Amount FLOAT, Active BIT)");
        db.run("create table Line(ID INT IDENTITY(1,1) PRIMARY KEY, ThingCode INT, Name NVARCHAR(50))");
    }
    void fill(int count)
    {
        db.connection().BeginTrans();
        for (int i = 1; i <= count; ++i)
            db.connection().execute(TStatement("insert into Thing(Code,Title,Amount,Active) values(")
                                        .integer(i * 2)
                                        .sql(",")
                                        .text(QString::number(i))
                                        .sql(",")
                                        .amount(i / 2.0)
                                        .sql(",1)"));
        db.connection().CommitTrans();
    }
    void openAll(const char *sql = "select * from Thing order by Code")
    {
        query.setStatement(sql);
        query.open();
    }

    TestDatabase db;
    TQuery query{&db.connection(), u"Get_QUR"_s};
};
