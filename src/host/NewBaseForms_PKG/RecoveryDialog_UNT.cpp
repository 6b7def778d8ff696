#include "host/NewBaseForms_PKG/RecoveryDialog_UNT.h"

#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/Declaration_PKG/Specialmessages.h"

#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

TRecovery_FRM::TRecovery_FRM(const TRecoveryRequest &request, QWidget *parent)
    : TBaseForm(parent), m_request(request), m_codes(new QTableWidget(int(request.left.size()), 2, this))
{
    SetTitle(u"بازیابی اطلاعات ثبت نشده"_s);
    auto *text = new QLabel(this);
    text->setObjectName(u"Text_LBL"_s);
    text->setWordWrap(true);
    const QString what = request.title.trimmed();
    text->setText(
        request.newRecord
            ? u"پنجره «%1» در این رایانه به درستی بسته نشده و سطرهای زیر ثبت نشده مانده است. می توانید آنها را با کد جدید %2 ادامه دهید."_s
                  .arg(what, request.newCode)
            : u"پنجره «%1» هنگام کار روی این رکورد به درستی بسته نشده و سطرهای زیر ثبت نشده مانده است. می توانید کار را با همین سطرها ادامه دهید."_s
                  .arg(what));
    Body()->addWidget(text);

    m_codes->setObjectName(u"Codes_GRD"_s);
    m_codes->setHorizontalHeaderLabels({u"کد"_s, u"تعداد سطر"_s});
    m_codes->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_codes->horizontalHeader()->setDefaultAlignment(Qt::AlignCenter);
    m_codes->verticalHeader()->hide();
    m_codes->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_codes->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_codes->setTabKeyNavigation(false);
    for (int row = 0; row < m_codes->rowCount(); ++row) {
        const TLeftRows &left = m_request.left.at(row);
        const QString texts[2] = {left.code, left.rows > 0 ? QString::number(left.rows) : u"-"_s};
        for (int column = 0; column < 2; ++column) {
            auto *item = new QTableWidgetItem(texts[column]);
            item->setTextAlignment(Qt::AlignCenter);
            m_codes->setItem(row, column, item);
        }
        if (m_codes->rowCount() > 1) {
            m_codes->item(row, 0)->setFlags(m_codes->item(row, 0)->flags() | Qt::ItemIsUserCheckable);
            m_codes->item(row, 0)->setCheckState(Qt::Checked);
        }
    }
    m_codes->setMinimumHeight(110);
    Body()->addWidget(m_codes, 1);

    const auto add = [this](const char *name, const QString &caption, const char *key,
                            TRecoveryChoice::Action action) {
        TSmartButton_ZLM *button = AddButton(QString::fromLatin1(name), caption, QString::fromLatin1(key));
        connect(button, &QAbstractButton::clicked, this, [this, action] { decide(action); });
        return button;
    };
    TSmartButton_ZLM *first =
        add("TakeUp_BTN", u"ادامه کار با این سطرها F3"_s, "F3", TRecoveryChoice::TakeUp);
    add("Discard_BTN", u"دور ریختن این سطرها F7"_s, "F7", TRecoveryChoice::Discard);
    if (request.newRecord && request.allOffered)
        add("DiscardAll_BTN", u"دور ریختن همه F8"_s, "F8", TRecoveryChoice::DiscardAll);
    add("Later_BTN", u"تصمیم در زمان دیگر Esc"_s, "Esc", TRecoveryChoice::Later);
    resize(620, 280);
    first->setFocus();
}

void TRecovery_FRM::decide(TRecoveryChoice::Action action)
{
    QStringList codes;
    for (int row = 0; row < m_codes->rowCount(); ++row)
        if (m_codes->rowCount() == 1 || m_codes->item(row, 0)->checkState() == Qt::Checked)
            codes << m_request.left.at(row).code;
    if (action != TRecoveryChoice::Later && action != TRecoveryChoice::DiscardAll && codes.isEmpty()) {
        MsgNotEntered(u"سطري"_s);
        return;
    }
    QStringList discarded;
    for (const TLeftRows &left : std::as_const(m_request.left))
        if (action == TRecoveryChoice::DiscardAll ||
            (action == TRecoveryChoice::Discard && codes.contains(left.code)))
            discarded << left.code;
    if (!discarded.isEmpty() && !MsgDeleteRow(u"کد: %1"_s.arg(discarded.join(u"، "_s))))
        return;
    m_choice = {action, codes};
    done(Accepted);
}
