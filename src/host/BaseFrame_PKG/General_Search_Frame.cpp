#include "host/BaseFrame_PKG/General_Search_Frame.h"

#include "host/Component_ZLM/SmartControls_ZLM.h"
#include "host/ZelmoSearch/ZelmoSearchManager.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QSignalBlocker>

using namespace Qt::Literals::StringLiterals;

TGeneral_Search_Frame::TGeneral_Search_Frame(QWidget *parent)
    : TSearch_Frame(parent), m_field(new TSmartComboBox_ZLM(this)), m_text(new TSmartEdit_ZLM(this))
{
    setObjectName(u"General_Search"_s);
    m_field->setObjectName(u"Field_CMB"_s);
    m_field->setAccessibleName(u"ستون جستجو"_s);
    m_text->setObjectName(u"Search_EDT"_s);
    m_text->SetMaxLength(200);
    m_text->setClearButtonEnabled(true);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    auto *label = new QLabel(u"&جستجو :"_s, this);
    label->setBuddy(m_text);
    row->addWidget(label);
    row->addWidget(m_field);
    row->addWidget(m_text, 1);
    m_text->setAccessibleName(u"جستجو"_s);
    m_text->installEventFilter(this);
    setFocusProxy(m_text);
    connect(m_text, &QLineEdit::textChanged, this, &TGeneral_Search_Frame::ChangedSoon);
    connect(m_field, &QComboBox::currentIndexChanged, this, [this] {
        if (!m_text->text().isEmpty())
            ChangedNow();
    });
}

void TGeneral_Search_Frame::init(TZelmoSearchManager *manager)
{
    SetManager(nullptr);
    {
        const QSignalBlocker quiet(m_field);
        m_field->clear();
        int chosen = 0;
        for (const TSearchItem &item : manager->Items()) {
            if (item.isDefault)
                chosen = m_field->count();
            m_field->addItem(item.caption);
        }
        m_field->setCurrentIndex(m_field->count() > 0 ? chosen : -1);
    }
    m_text->clear();
    SetManager(manager);
    SetConditions(IsActive());
    manager->ExecuteFilter_DataSet();
}

bool TGeneral_Search_Frame::SetConditions(bool active)
{
    TStatement condition;
    const int item = m_field->currentIndex();
    if (active && item >= 0 && item < Manager()->Items().size())
        condition = TZelmoSearchManager::ConditionFor(Manager()->Items().at(item), m_text->text());
    Manager()->SetCondition(u"general"_s, condition);
    return true;
}

bool TGeneral_Search_Frame::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_text && event->type() == QEvent::KeyPress) {
        auto *key = static_cast<QKeyEvent *>(event);
        const auto modifiers = key->modifiers() & ~Qt::KeypadModifier;
        if (modifiers == Qt::NoModifier) {
            switch (key->key()) {
            case Qt::Key_Escape:
                if (m_text->text().isEmpty())
                    break;
                m_text->clear();
                ChangedNow();
                return true;
            case Qt::Key_Down:
            case Qt::Key_Return:
            case Qt::Key_Enter:
                ChangedNow(); // the list that the focus goes to is the one that was typed
                Q_EMIT leaveDown();
                return true;
            default:
                break;
            }
        }
    }
    return TSearch_Frame::eventFilter(watched, event);
}
