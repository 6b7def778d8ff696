#include "host/BaseFrame_PKG/Range_Date_Search_Frame.h"

#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Utility_ZLM/PersianCalendar.h"

#include <QHBoxLayout>
#include <QLabel>

using namespace Qt::Literals::StringLiterals;

TRange_Date_Search_Frame::TRange_Date_Search_Frame(QWidget *parent)
    : TSearch_Frame(parent), m_from(new TSmartDateEdit_ZLM(this)), m_to(new TSmartDateEdit_ZLM(this))
{
    setObjectName(u"Range_Date_Search"_s);
    m_from->setObjectName(u"FromDate_EDT"_s);
    m_to->setObjectName(u"ToDate_EDT"_s);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const QString &caption, TSmartDateEdit_ZLM *edit) {
        auto *label = new QLabel(caption, this);
        label->setBuddy(edit);
        edit->setAccessibleName(QString(caption).remove(u'&').remove(u':').trimmed());
        row->addWidget(label);
        row->addWidget(edit);
        connect(edit, &TSmartDateEdit_ZLM::changed, this, &TRange_Date_Search_Frame::ChangedSoon);
    };
    add(u"&از تاریخ :"_s, m_from);
    add(u"&تا تاریخ :"_s, m_to);
    row->addStretch(1);
    setFocusProxy(m_from);
}

void TRange_Date_Search_Frame::init(TZelmoSearchManager *manager, const TSearchItem &item)
{
    SetManager(nullptr);
    m_item = item;
    m_from->Clear();
    m_to->Clear();
    SetManager(manager);
    SetConditions(IsActive());
}

bool TRange_Date_Search_Frame::SetConditions(bool active)
{
    const QString frame = u"dates"_s;
    if (!active) {
        Manager()->SetCondition(frame, {});
        return true;
    }
    QString ends[2];
    const TSmartDateEdit_ZLM *edits[2] = {m_from, m_to};
    for (int i = 0; i < 2; ++i) {
        if (edits[i]->text().trimmed().isEmpty())
            continue;
        const auto date = TPersianDate::parse(edits[i]->text());
        if (!date)
            return false;
        ends[i] = date->toText();
    }
    Manager()->SetCondition(frame, TZelmoSearchManager::RangeCondition(m_item, ends[0], ends[1]));
    return true;
}
