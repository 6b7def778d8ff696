#include "host/Declaration_PKG/Utilityclasses_unt.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/Utility_ZLM/PersianText.h"

namespace {

const int valueWidth = 400; // characters of CustomParam.Value

} // namespace

int TParamValue::AsInteger() const
{
    return PersianText::latinDigits(m_text).trimmed().toInt();
}

bool TParamValue::AsBoolean() const
{
    return AsInteger() != 0 || m_text.trimmed().compare(QLatin1String("true"), Qt::CaseInsensitive) == 0;
}

TParamValue TCustomParam::GetData(int number)
{
    return TParamValue(
        DM.ADOConnection1->scalar(TStatement("select Value from CustomParam where Number=").integer(number))
            .toString());
}

void TCustomParam::SetData(int number, const QString &value)
{
    const QString stored = value.left(valueWidth);
    const int changed = DM.ADOConnection1->execute(
        TStatement("update CustomParam set Value=").text(stored).sql(" where Number=").integer(number));
    if (changed == 0) {
        DM.ADOConnection1->execute(TStatement("insert into CustomParam(Number, Value) values(")
                                       .integer(number)
                                       .sql(",")
                                       .text(stored)
                                       .sql(")"));
    }
}
