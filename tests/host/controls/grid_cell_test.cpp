#include "host/Component_ZLM/GridCellDelegate.h"

#include <QImage>
#include <QPainter>
#include <QStandardItemModel>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The same cells as the style itself paints them.
class TStylesOwn : public GridCellDelegate {
public:
    using GridCellDelegate::GridCellDelegate;
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
    }
};

const QList<TGridColumn> columns = {{u"Title"_s, u"عنوان"_s},
                                    {u"Cost"_s, u"مبلغ"_s, 0, true, TGridColumn::Money}};

struct GridCell : testing::Test {
    QStandardItemModel model{1, 2};
    QTableView view;
    GridCellDelegate ours{&view, columns};
    TStylesOwn styles{&view, columns};

    GridCell() { view.setLayoutDirection(Qt::RightToLeft); }
    QImage painted(const GridCellDelegate &delegate, int column, QStyle::State state, int width = 180) const
    {
        QImage image(width + 20, 44, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        QStyleOptionViewItem option;
        option.initFrom(&view);
        option.widget = &view;
        option.font = view.font();
        option.state = state;
        option.rect = {7, 5, width, 24};
        option.direction = Qt::RightToLeft;
        option.displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
        option.showDecorationSelected = true;
        option.textElideMode = Qt::ElideRight;
        delegate.paint(&painter, option, model.index(0, column));
        return image;
    }
    void expectSame(const QString &text)
    {
        const QStyle::State states[] = {QStyle::State_Enabled | QStyle::State_Active,
                                        QStyle::State_Enabled | QStyle::State_Active | QStyle::State_Selected,
                                        QStyle::State_Enabled | QStyle::State_Selected, QStyle::State_None};
        for (int column = 0; column < 2; ++column) {
            model.setData(model.index(0, column), text);
            for (const QStyle::State state : states) {
                for (const int width : {20, 60, 180, 400}) {
                    const QImage image = painted(ours, column, state, width);
                    EXPECT_EQ(image, painted(styles, column, state, width))
                        << text.toStdString() << " in column " << column << ", " << width << " wide, state "
                        << int(state);
                }
            }
        }
    }
};

TEST_F(GridCell, EachTextStandsWhereTheStyleWouldPutIt)
{
    for (const QString &text :
         {u"روش محاسباتی ۱۲"_s, u"حق بيمه کارمند"_s, u"12,345,678"_s, u"-5"_s, u"Payroll (حقوق) 3"_s,
          u"  فاصله  "_s, u"می‌شود 😀"_s, u"متنی بلند که در هیچ ستونی جا نمی شود "_s.repeated(5),
          u"سطر یک\nسطر دو"_s, QString()})
        expectSame(text);
}

TEST_F(GridCell, ATextIsSeen)
{
    model.setData(model.index(0, 0), u"روش"_s);
    const QStyle::State state = QStyle::State_Enabled | QStyle::State_Active;
    const QImage with = painted(ours, 0, state);
    model.setData(model.index(0, 0), QString());
    EXPECT_NE(with, painted(ours, 0, state));
}

TEST_F(GridCell, ACellWithATickIsTheStyles)
{
    auto *item = new QStandardItem(u"مزایا"_s);
    item->setCheckable(true);
    for (const Qt::CheckState tick : {Qt::Checked, Qt::Unchecked}) {
        item->setCheckState(tick);
        model.setItem(0, 0, item);
        expectSame(u"حق مسکن"_s);
    }
}

} // namespace
