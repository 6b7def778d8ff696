#include "staff/ListScreens.h"

#include <QAction>
#include <QApplication>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

namespace {

/// Counts the staff editors that are shown, and closes them.
class TEditorsShown : public QObject {
public:
    TEditorsShown() { qApp->installEventFilter(this); }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show && watched->objectName() == "TStaffGet_FRM"_L1) {
            ++count;
            QTimer::singleShot(0, static_cast<QWidget *>(watched), &QWidget::close);
        }
        return false;
    }
    int count = 0;
};

} // namespace

TEST_F(StaffList, WithoutAGroupOfItsOwnTheUserIsSentToTheGroups)
{
    db.run("delete from Staff");
    db.run("delete from StaffGroup where Code>0");
    with(fmBrowse, [&](TStaffList_FRM &list) {
        TEditorsShown editors;
        inScreen<TGroupList_FRM>(list, Qt::Key_F4,
                                 [&](TGroupList_FRM &groups) { press(groups, Qt::Key_Escape); });
        EXPECT_EQ(messages.take(), QStringList("MakeGroup()"));
        EXPECT_EQ(codes(list), "");
        EXPECT_EQ(editors.count, 0);
    });
}

TEST_F(StaffList, AGroupThatIsMadeThereDoesNotOpenTheEditorYet)
{
    db.run("delete from Staff");
    db.run("delete from StaffGroup where Code>0");
    with(fmBrowse, [&](TStaffList_FRM &list) {
        TEditorsShown editors;
        inScreen<TGroupList_FRM>(list, Qt::Key_F4, [&](TGroupList_FRM &groups) {
            inScreen<TGroupGet_FRM>(groups, Qt::Key_F4, [&](TGroupGet_FRM &group) {
                Keys::type(group.Name_EDT, u"فروش"_s);
                press(group, Qt::Key_F3);
            });
            EXPECT_EQ(messages.take(),
                      QStringList({"MakeGroup()", u"MSGCompeletedSuccessfully(ذخیره سازی)"_s}));
            press(groups, Qt::Key_Escape);
        });
        EXPECT_EQ(editors.count, 0);
        EXPECT_EQ(Staff_DM->GroupList_QUR->recordCount(), 2);
        press(list, Qt::Key_F4); // now there is a group
        EXPECT_EQ(editors.count, 1);
    });
}

TEST_F(StaffList, GroupsAreKeptThroughTheHost)
{
    messages.answer({Yes});
    with(fmBrowse, [&](TStaffList_FRM &list) {
        Keys::runModal(
            [&] {
                list.Groups->GNew_PMI->trigger();
                return 0;
            },
            [&](QWidget *screen) {
                auto &editor = dynamic_cast<TGroupGet_FRM &>(*screen);
                Keys::type(editor.Name_EDT, u"فروش"_s);
                Keys::press(&editor, Qt::Key_F3);
            });
        EXPECT_EQ(list.Groups->CurrentCode(), 3); // the last row
        EXPECT_EQ(codes(list), "");
        messages.take();
        Keys::runModal(
            [&] {
                list.Groups->GEdit_PMI->trigger();
                return 0;
            },
            [&](QWidget *screen) {
                auto &editor = dynamic_cast<TGroupGet_FRM &>(*screen);
                EXPECT_EQ(editor.Name_EDT->GetText(), u"فروش"_s);
                Keys::retype(editor.Name_EDT, u"بازرگانی"_s);
                Keys::press(&editor, Qt::Key_F3);
            });
        EXPECT_EQ(Staff_DM->GroupList_QUR->asString("Name"), u"بازرگانی"_s);
        messages.take();
        list.Groups->GDelete_PMI->trigger();
        EXPECT_EQ(messages.take().value(0), "MsgDeleteRow()");
    });
    EXPECT_EQ(db.text("select count(*) from StaffGroup"), "3");
}

// However the group's editor was left.
TEST_F(StaffList, ANewGroupThatIsNotSavedMovesToTheLastGroupToo)
{
    with(fmBrowse, [&](TStaffList_FRM &list) {
        toGroup(list, 1);
        Keys::runModal(
            [&] {
                list.Groups->GNew_PMI->trigger();
                return 0;
            },
            [&](QWidget *screen) {
                Keys::waitFor([&] { return screen->isActiveWindow(); });
                Keys::press(screen, Qt::Key_Escape);
            });
        EXPECT_EQ(list.Groups->CurrentCode(), 2);
        EXPECT_EQ(codes(list), "2 3");
    });
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(StaffList, F11OpensTheGroupsAndMovesToTheChosenOne)
{
    with(fmBrowse, [&](TStaffList_FRM &list) {
        inScreen<TGroupList_FRM>(list, Qt::Key_F11, [&](TGroupList_FRM &groups) {
            Keys::picture(&groups, "staff_groups");
            press(groups, Qt::Key_Return);
        });
        EXPECT_EQ(list.Groups->CurrentCode(), 2);
        EXPECT_EQ(codes(list), "2 3");
    });
}
