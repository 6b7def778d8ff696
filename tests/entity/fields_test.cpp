// The fields of earnings and deductions on their way from the screen to the table and back.
#include "entity/EntityScreens.h"
#include "support/EnteredFields.h"

namespace {

/// A field has a line here. The code is offered, not typed.
const QHash<QString, QString> entered = {
    {"code", "10"},     {"Grpcode", "2"}, {"CalcType", "2"},     {"title", u"تازه"_s},
    {"Kol", "61"},      {"Moin", "2"},    {"Tafzili", "2"},      {"cost", "1234567.5"},
    {"Insurance", "1"}, {"Tax", "1"},     {"comment", u"شرح"_s},
};

class EntityFields : public EntityScreens {
protected:
    void typedStoredAndShown(TSoftwarePart part, const QString &table, const QString &group)
    {
        const auto fields = entityFields(part);
        QHash<QString, QString> values = entered;
        values["Grpcode"] = group;
        editNew(part, group, [&](TFiscalDeducation_Get_FRM &editor) {
            for (const int page : {etAboveAccount, etAccount, etBelowAccount})
                for (const auto *field : Fields::onPage(fields, page))
                    if (field->input.kind != TFieldInput::CodedChoice)
                        EnteredFields::enter(editor, field->input,
                                             values.value(QString::fromLatin1(field->column)));
            Keys::press(&editor, Qt::Key_F3);
            EXPECT_FALSE(editor.isVisible()) << messages.take().join(u' ').toStdString();
        });
        for (const auto &field : fields) {
            const QString column = QString::fromLatin1(field.column);
            EXPECT_EQ(db.text(u"select [%1] from %2 where Code=10"_s.arg(column, table)),
                      values.value(column))
                << field.column;
        }
        messages.take();
        edit(part, 10, [&](TFiscalDeducation_Get_FRM &editor) {
            for (const auto &field : fields)
                EXPECT_EQ(EnteredFields::shown(editor, field.input),
                          values.value(QString::fromLatin1(field.column)))
                    << field.column;
            Keys::press(&editor, Qt::Key_Escape);
        });
        EXPECT_EQ(messages.take(), QStringList()) << "nothing was changed by showing it";
    }
};

TEST_F(EntityFields, EveryFieldOfAnEarningIsTypedStoredAndShownAgain)
{
    EnteredFields::expectPlaces(entityFields(cspFiscal), entered);
    ASSERT_EQ(int(entityFields(cspFiscal).size()), entered.size());
    typedStoredAndShown(cspFiscal, u"Fiscal"_s, u"1"_s);
}

TEST_F(EntityFields, EveryFieldOfADeductionIsTypedStoredAndShownAgain)
{
    typedStoredAndShown(cspDeduction, u"Deduction"_s, u"5"_s);
}

} // namespace
