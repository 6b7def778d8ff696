#include "staff/FamilyScreens.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

TEST_F(StaffFamily, AFullMemberThatNobodyTouchedIsSavedAsItWas)
{
    db.run(
        "insert into tmpStaffFamily(ID,StaffCode,Type,Name,Sex,InsuranceNumber,BirthDate,Death,DeathDate,Comment) "
        "values(4,5,2,N'سارا يزدی',1,'0077','1372/06/31',1,'1403/12/30',N'شرح كوتاه')");
    const QString before = row(4);
    EXPECT_EQ(before, u"5|4|سارا يزدی|1|1372/06/31|1|1403/12/30|شرح كوتاه|2|0077"_s);
    const auto screen = member(4);
    open(*screen, [&] {
        EXPECT_EQ(screen->Type_CMB->currentIndex(), 1);
        EXPECT_EQ(screen->Sex_CMB->currentIndex(), 1);
        EXPECT_EQ(screen->BirthDate_EDT->GetText(), "1372/06/31");
        EXPECT_EQ(screen->InsuranceNumber_EDT->GetText(), "0077");
        EXPECT_EQ(screen->Comment_EDT->GetText(), u"شرح كوتاه"_s);
        EXPECT_TRUE(screen->Death_CHK->isChecked());
        EXPECT_TRUE(screen->DeathDate_EDT->isEnabled());
        EXPECT_EQ(screen->DeathDate_EDT->GetText(), "1403/12/30");
        EXPECT_TRUE(screen->IsSaved());
        press(*screen, Qt::Key_F3);
    });
    EXPECT_EQ(messages.take(), QStringList());
    EXPECT_EQ(row(4), before);
}

// The date ticks the box, not the column beside it.
TEST_F(StaffFamily, ADeathWithoutADateLeavesTheBoxClear)
{
    addMember(4, 5, "x", "tmpStaffFamily");
    db.run("update tmpStaffFamily set Death=1");
    const auto screen = member(4);
    open(*screen, [&] {
        EXPECT_FALSE(screen->Death_CHK->isChecked());
        EXPECT_FALSE(screen->DeathDate_EDT->isEnabled());
        press(*screen, Qt::Key_F3);
    });
    EXPECT_EQ(row(4), "5|4|x|0|1390/01/05|0|||1|");
}

TEST_F(StaffFamily, AKinshipThatIsNeitherShowsASpouse)
{
    addMember(4, 5, "x", "tmpStaffFamily");
    for (const char *kinship : {"0", "3", "null"}) {
        db.run(u"update tmpStaffFamily set Type=%1"_s.arg(QLatin1String(kinship)));
        const auto screen = member(4);
        open(*screen, [&] { EXPECT_EQ(screen->Type_CMB->currentIndex(), 1) << kinship; });
    }
}

TEST_F(StaffFamily, AMemberWithoutACodeIsRefusedFirst)
{
    const auto screen = newMember();
    messages.answer({No});
    open(*screen, [&] {
        screen->Code_EDT->SetText({});
        press(*screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"MsgRequiredField(کد)"_s));
        EXPECT_EQ(messages.last().control, screen->Code_EDT);
        EXPECT_TRUE(screen->isVisible());
    });
    EXPECT_EQ(working(), "");
}

TEST_F(StaffFamily, ATakenCodeIsToldBeforeAMissingName)
{
    const auto screen = newMember();
    messages.answer({No});
    open(*screen, [&] {
        addMember(1, 6, "theirs", "tmpStaffFamily");
        press(*screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"MsgRepeatedField(کد|خانواده)"_s));
        press(*screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"MsgRequiredField(نام و نام خانوادگي)"_s));
    });
    EXPECT_EQ(working(), "1|6|theirs");
}

TEST_F(StaffFamily, ADateOfDeathThatDoesNotExistIsToldBeforeOneThatIsTooEarly)
{
    const auto screen = newMember();
    messages.answer({No});
    open(*screen, [&] {
        Keys::type(screen->Name_EDT, "x");
        Keys::type(screen->BirthDate_EDT, "1391/01/01");
        screen->Death_CHK->setFocus();
        press(*screen, Qt::Key_Space);
        Keys::type(screen->DeathDate_EDT, "1390/13/01");
        press(*screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList("ShowSmartMessage:10()"));
        EXPECT_EQ(screen->focusWidget(), screen->DeathDate_EDT);
    });
}

// The input takes a hundred characters, the column fifty.
TEST_F(StaffFamily, ALongNameIsCutToFiftyCharacters)
{
    for (const int length : {51, 100}) {
        db.run("delete from tmpStaffFamily");
        const QString name = QString(49, u'ن') + u'م' + QString(length - 50, u'ی');
        const auto screen = newMember();
        open(*screen, [&] {
            Keys::type(screen->Name_EDT, name);
            EXPECT_EQ(screen->Name_EDT->GetText(), name);
            messages.answer({Yes});
            press(*screen, Qt::Key_F3);
        });
        EXPECT_EQ(messages.take(), QStringList(u"MsgTextsCut(نام و نام خانوادگی)"_s));
        EXPECT_EQ(working(), u"1|5|"_s + name.left(50));
    }
}

TEST_F(StaffFamily, NameAndInsuranceNumberEachMarkTheMemberAsChanged)
{
    for (const char *input : {"Name_EDT", "InsuranceNumber_EDT"}) {
        const auto screen = newMember();
        messages.answer({No});
        open(*screen, [&] {
            EXPECT_TRUE(screen->IsSaved());
            Keys::type(Keys::child(screen.get(), input), "1");
            EXPECT_FALSE(screen->IsSaved()) << input;
            press(*screen, Qt::Key_Escape);
        });
        EXPECT_EQ(messages.take(), QStringList("MsgNotSaved()")) << input;
    }
}

TEST_F(StaffFamily, RowsAreAddedEditedAndDeletedByTheButtonsToo)
{
    add(5, "five", "five", "IsMarried=1");
    addMember(1, 5, "a");
    addMember(2, 5, "b");
    const auto editor = editorOf(5);
    messages.answer({Yes, No});
    open(*editor, [&] {
        toFamily(*editor);
        const auto click = [&](const char *button) {
            QTest::mouseClick(Keys::child(editor.get(), button), Qt::LeftButton);
        };
        inMember([&] { click("NewRow_BTN"); },
                 [&](TStaffFamily_GetDetil_FRM &screen) {
                     EXPECT_EQ(screen.Mode(), fmNew);
                     Keys::type(screen.Name_EDT, "c");
                     press(screen, Qt::Key_F3);
                 });
        EXPECT_EQ(Staff_DM->Family_QUR->asString("Name"), "c");
        inMember([&] { click("EditRow_BTN"); },
                 [&](TStaffFamily_GetDetil_FRM &screen) {
                     EXPECT_EQ(screen.Mode(), fmEdit);
                     EXPECT_EQ(screen.Code_EDT->GetText(), "3");
                     Keys::retype(screen.Name_EDT, "C");
                     press(screen, Qt::Key_F3);
                 });
        EXPECT_EQ(working(), "1|5|a\n2|5|b\n3|5|C");
        click("DelRow_BTN");
        EXPECT_EQ(messages.take(), QStringList("MsgDeleteRow()"));
        EXPECT_EQ(working(), "1|5|a\n2|5|b");
        EXPECT_FALSE(editor->IsSaved());
        press(*editor, Qt::Key_Escape);
    });
    EXPECT_EQ(saved(), "1|5|a\n2|5|b");
}

TEST_F(StaffFamily, ADoubleClickEditsTheRowUnderIt)
{
    add(5, "five", "five", "IsMarried=1");
    addMember(1, 5, "a");
    addMember(2, 5, "b");
    const auto editor = editorOf(5);
    open(*editor, [&] {
        toFamily(*editor);
        TSmartGrid_ZLM *grid = frame(*editor)->Grid();
        for (const int at : {1, 0}) {
            const QPoint point = grid->visualRect(grid->model()->index(at, 1)).center();
            inMember(
                [&] {
                    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, point);
                    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, point);
                },
                [&](TStaffFamily_GetDetil_FRM &screen) {
                    EXPECT_EQ(screen.Mode(), fmEdit);
                    EXPECT_EQ(screen.Code_EDT->GetText(), QString::number(at + 1));
                });
        }
    });
}
