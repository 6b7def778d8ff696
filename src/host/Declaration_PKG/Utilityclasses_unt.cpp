#include "host/Declaration_PKG/Utilityclasses_unt.h"

#include "host/Declaration_PKG/DM_UNT.h"
#include "host/database/Query.h"

using namespace Qt::Literals::StringLiterals;

bool TParamValue::AsBoolean() const
{
    const QString text = m_text.trimmed();
    return text == u"1" || text.compare(u"true", Qt::CaseInsensitive) == 0;
}

TParamValue TCustomParam::GetData(int number)
{
    return TParamValue(
        DM.ADOConnection1->scalar(TStatement("select Value from CustomParam where Number=").integer(number))
            .toString());
}

void TCustomParam::SetData(int number, const QString &value)
{
    TQuery setting(DM.ADOConnection1, u"CustomParam_QUR"_s);
    setting.setStatement(TStatement("select Number, Value from CustomParam where Number=").integer(number));
    setting.open();
    if (setting.isEmpty()) {
        setting.append();
        setting.setValue(u"Number"_s, number);
    } else {
        setting.edit();
    }
    setting.setValue(u"Value"_s, value);
    setting.post();
}
