#include "staff/FamilyScreens.h"
#include "support/TestUser.h"

#include <QGroupBox>
#include <QLabel>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

using enum TAnswer;

TEST_F(StaffFamily, ANewMemberHasItsDefaults)
{
    add(5, "five", "five");
    addMember(7, 5, "a");
    addMember(9, 6, "b", "tmpStaffFamily");
    const auto screen = newMember();
    open(*screen, [&] {
        EXPECT_EQ(screen->objectName(), "TStaffFamily_GetDetil_FRM");
        EXPECT_EQ(screen->Code_EDT->GetText(), "10");
        EXPECT_FALSE(screen->Code_EDT->isEnabled());
        EXPECT_TRUE(screen->BirthDate_EDT->IsEmpty());
        EXPECT_FALSE(screen->Death_CHK->isChecked());
        EXPECT_FALSE(screen->DeathDate_EDT->isEnabled());
        EXPECT_TRUE(screen->IsSaved());
        EXPECT_EQ(screen->focusWidget(), screen->Name_EDT);
        Keys::picture(screen.get(), "staff_family_member");
    });
}

TEST_F(StaffFamily, TheInputsHaveTheirCaptions)
{
    const auto screen = newMember();
    const QList<std::pair<const char *, QString>> captions = {{"Code_EDT", u"  &کد :"_s},
                                                              {"Name_EDT", u"  نام و نام خانواد&گی :"_s},
                                                              {"Sex_CMB", u"  جن&سیت :"_s},
                                                              {"BirthDate_EDT", u"  تاریخ تو&لد :"_s},
                                                              {"Comment_EDT", u"  شرح& :"_s},
                                                              {"Type_CMB", u"  &نسبت :"_s},
                                                              {"InsuranceNumber_EDT", u"  کد بیم&ه :"_s}};
    for (const auto &[name, caption] : captions)
        EXPECT_EQ(Keys::find<QLabel>(screen.get(), QString::fromLatin1(name) + "_Caption")->text(), caption)
            << name;
    EXPECT_EQ(Keys::find<QLabel>(screen.get(), "DeathDate_LBL")->text(), u"  تاریخ &فوت :"_s);
    EXPECT_EQ(screen->findChild<QGroupBox *>()->title(), u"اطلاعات خانوار کارمند"_s);
    EXPECT_EQ(screen->Save_BTN->text(), u"ذخيره F3"_s);
    EXPECT_EQ(screen->EXit_BTN->text(), u"خروج Esc"_s);
    EXPECT_EQ(screen->Code_EDT->MaxLength(), 15);
    EXPECT_EQ(screen->Name_EDT->MaxLength(), 100);
    EXPECT_EQ(screen->Comment_EDT->MaxLength(), 50);
    EXPECT_EQ(screen->InsuranceNumber_EDT->MaxLength(), 20);
}

TEST_F(StaffFamily, AMemberIsStoredInTheWorkingTableOnly)
{
    const auto screen = newMember();
    const int result = open(*screen, [&] {
        Keys::type(screen->Name_EDT, u"سارا"_s);
        screen->Sex_CMB->setFocus();
        press(*screen, Qt::Key_Down);
        Keys::type(screen->BirthDate_EDT, "13911230");
        screen->Type_CMB->setFocus();
        press(*screen, Qt::Key_Down);
        Keys::type(screen->InsuranceNumber_EDT, "001");
        Keys::type(screen->Comment_EDT, u"شرح دوازده حرفی"_s); // the column holds 10
        messages.answer({Yes});
        press(*screen, Qt::Key_F3);
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(row(1), u"5|1|سارا|1|1391/12/30|0||شرح دوازده|2|001"_s.replace(u"شرح دوازده"_s,
                                                                             u"شرح دوازده حرفی"_s.left(10)));
    EXPECT_EQ(saved(), "");
    EXPECT_EQ(messages.take(), QStringList(u"MsgTextsCut(شرح)"_s));
}

TEST_F(StaffFamily, ADeathTicksItsBoxAndEqualsTheBirthAtTheEarliest)
{
    const auto screen = newMember();
    messages.answer({No});
    open(*screen, [&] {
        Keys::type(screen->Name_EDT, "x");
        Keys::type(screen->BirthDate_EDT, "1390/01/05");
        screen->Death_CHK->setFocus();
        press(*screen, Qt::Key_Space);
        EXPECT_TRUE(screen->DeathDate_EDT->isEnabled());
        Keys::type(screen->DeathDate_EDT, "1390/01/04");
        press(*screen, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(messages.take(),
                  QStringList(u"ShowTooltipMessage(تاریخ فوت نمی تواند از تاریخ تولد کوچکتر باشد.)"_s));
        EXPECT_EQ(messages.last().shape, TMessageShape::Balloon);
        EXPECT_EQ(messages.last().control, screen->DeathDate_EDT);
        EXPECT_EQ(messages.last().displayTime, 3000);
        EXPECT_EQ(messages.last().icon, 4);
        EXPECT_EQ(messages.last().color, QColor(192, 192, 192));
        EXPECT_EQ(messages.last().width, 250);
        EXPECT_EQ(screen->focusWidget(), screen->DeathDate_EDT);
        Keys::retype(screen->DeathDate_EDT, "1390/01/05");
        press(*screen, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(row(1), "5|1|x|0|1390/01/05|1|1390/01/05||1|");
        screen->Death_CHK->setFocus();
        press(*screen, Qt::Key_Space);
        EXPECT_TRUE(screen->DeathDate_EDT->IsEmpty());
        EXPECT_FALSE(screen->DeathDate_EDT->isEnabled());
        press(*screen, Qt::Key_F3);
    });
    EXPECT_EQ(row(1), "5|1|x|0|1390/01/05|0|||1|");
}

TEST_F(StaffFamily, AClickOnTheDeathCaptionWorksTheBox)
{
    messages.answer({No});
    const auto screen = newMember();
    open(*screen, [&] {
        auto *caption = Keys::find<QLabel>(screen.get(), "DeathDate_LBL");
        QTest::mouseClick(caption, Qt::LeftButton);
        EXPECT_TRUE(screen->Death_CHK->isChecked());
        Keys::type(screen->DeathDate_EDT, "1390");
        QTest::mouseClick(caption, Qt::LeftButton);
        EXPECT_FALSE(screen->Death_CHK->isChecked());
        EXPECT_TRUE(screen->DeathDate_EDT->IsEmpty());
    });
}

TEST_F(StaffFamily, TheChecksRunInTheirOrder)
{
    const auto screen = newMember();
    messages.answer({No});
    open(*screen, [&] {
        Keys::type(screen->BirthDate_EDT, "1404/12/30");
        press(*screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"MsgRequiredField(نام و نام خانوادگي)"_s));
        EXPECT_EQ(screen->focusWidget(), screen->Name_EDT);
        Keys::type(screen->Name_EDT, "x");
        screen->Death_CHK->setFocus();
        press(*screen, Qt::Key_Space);
        Keys::type(screen->DeathDate_EDT, "1404/13/01");
        press(*screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList("ShowSmartMessage:10()"));
        EXPECT_EQ(screen->focusWidget(), screen->BirthDate_EDT);
        Keys::retype(screen->BirthDate_EDT, "1403/12/30");
        press(*screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList("ShowSmartMessage:10()"));
        EXPECT_EQ(screen->focusWidget(), screen->DeathDate_EDT);
        press(*screen, Qt::Key_Escape);
    });
    EXPECT_EQ(working(), "");
}

TEST_F(StaffFamily, ACodeThatWasTakenMeanwhileIsRefusedAndTheNextSaveHasANewOne)
{
    const auto screen = newMember();
    open(*screen, [&] {
        Keys::type(screen->Name_EDT, "mine");
        addMember(1, 6, "theirs", "tmpStaffFamily");
        press(*screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"MsgRepeatedField(کد|خانواده)"_s));
        EXPECT_EQ(screen->Name_EDT->GetText(), "mine");
        press(*screen, Qt::Key_F3);
    });
    EXPECT_EQ(working(), "1|6|theirs\n2|5|mine");
}

TEST_F(StaffFamily, ACodeThatWasStoredMeanwhileIsRefusedAndTheNextSaveHasANewOne)
{
    const auto screen = newMember();
    open(*screen, [&] {
        Keys::type(screen->Name_EDT, "mine");
        db.run("insert into Staff(Code) values(6)");
        addMember(1, 6, "theirs", "StaffFamily");
        press(*screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"MsgRepeatedField(کد|خانواده)"_s));
        press(*screen, Qt::Key_F3);
    });
    EXPECT_EQ(working(), "2|5|mine");
}

TEST_F(StaffFamily, AnEditedRowKeepsItsOwnCode)
{
    addMember(4, 5, "before", "tmpStaffFamily");
    const auto screen = member(4);
    open(*screen, [&] {
        EXPECT_EQ(screen->Code_EDT->GetText(), "4");
        EXPECT_EQ(screen->Name_EDT->GetText(), "before");
        EXPECT_FALSE(screen->Death_CHK->isChecked());
        Keys::retype(screen->Name_EDT, "after");
        press(*screen, Qt::Key_F3, Qt::ShiftModifier);
        press(*screen, Qt::Key_F3); // saved twice
    });
    EXPECT_EQ(working(), "4|5|after");
    EXPECT_EQ(messages.take(), QStringList());
}

TEST_F(StaffFamily, ANewRowSavedTwiceIsOneRow)
{
    const auto screen = newMember();
    open(*screen, [&] {
        Keys::type(screen->Name_EDT, "once");
        press(*screen, Qt::Key_F3, Qt::ShiftModifier);
        Keys::retype(screen->Name_EDT, "twice");
        press(*screen, Qt::Key_F3);
    });
    EXPECT_EQ(working(), "1|5|twice");
}

TEST_F(StaffFamily, ARowThatCannotBeWrittenStaysAsTyped)
{
    const auto screen = newMember();
    messages.answer({No});
    open(*screen, [&] {
        Keys::type(screen->Name_EDT, "x");
        db.connection().setStatementHook([](const TStatement &statement) {
            if (statement.boundText().startsWith("insert into [tmpStaffFamily]", Qt::CaseInsensitive))
                throw TDatabaseError(TFault::DiskFull, "played by a test");
        });
        press(*screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(notSavedMessage));
        EXPECT_EQ(screen->Name_EDT->GetText(), "x");
        db.connection().setStatementHook({});
        press(*screen, Qt::Key_F3);
    });
    EXPECT_EQ(working(), "1|5|x");
}

TEST_F(StaffFamily, TheEditorCopiesTheSavedRowsInAndClearsThemOnClosing)
{
    add(5, "five", "five", "IsMarried=1");
    addMember(1, 5, "a");
    addMember(2, 5, "b");
    add(6, "six", "six");
    addMember(3, 6, "other");
    const auto editor = editorOf(5);
    open(*editor, [&] {
        EXPECT_EQ(working(), "1|5|a\n2|5|b");
        toFamily(*editor);
        Keys::picture(editor.get(), "staff_family");
        press(*editor, Qt::Key_Escape);
    });
    EXPECT_EQ(working(), "");
    EXPECT_EQ(saved(), "1|5|a\n2|5|b\n3|6|other");
}

TEST_F(StaffFamily, RowsAreAddedEditedAndDeletedByKeysAndSavedWithTheEmployee)
{
    add(5, "five", "five", "IsMarried=1");
    addMember(1, 5, "a");
    addMember(2, 5, "b");
    const auto editor = editorOf(5);
    messages.answer({Yes});
    open(*editor, [&] {
        toFamily(*editor);
        inMember(*editor, Qt::Key_Plus, Qt::KeypadModifier, [&](TStaffFamily_GetDetil_FRM &screen) {
            EXPECT_EQ(screen.Mode(), fmNew);
            Keys::type(screen.Name_EDT, "c");
            press(screen, Qt::Key_F3);
        });
        EXPECT_EQ(Staff_DM->Family_QUR->asString("Name"), "c");
        EXPECT_FALSE(editor->IsSaved());
        press(*editor, Qt::Key_Up);
        inMember(*editor, Qt::Key_Asterisk, Qt::KeypadModifier, [&](TStaffFamily_GetDetil_FRM &screen) {
            EXPECT_EQ(screen.Name_EDT->GetText(), "b");
            Keys::retype(screen.Name_EDT, "B");
            press(screen, Qt::Key_F3);
        });
        press(*editor, Qt::Key_Up);
        press(*editor, Qt::Key_Delete);
        EXPECT_EQ(messages.take(), QStringList("MsgDeleteRow()"));
        EXPECT_EQ(working(), "2|5|B\n3|5|c");
        EXPECT_EQ(saved(), "1|5|a\n2|5|b");
        press(*editor, Qt::Key_F3);
    });
    EXPECT_EQ(saved(), "2|5|B\n3|5|c");
    EXPECT_EQ(working(), "");
}

TEST_F(StaffFamily, DeletingARowAndCancellingLeavesTheSavedOne)
{
    add(5, "five", "five", "IsMarried=1");
    addMember(1, 5, "a");
    const auto editor = editorOf(5);
    messages.answer({Yes, No});
    open(*editor, [&] {
        toFamily(*editor);
        press(*editor, Qt::Key_Minus, Qt::KeypadModifier);
        EXPECT_EQ(working(), "");
        press(*editor, Qt::Key_Escape);
    });
    EXPECT_EQ(messages.take(), QStringList({"MsgDeleteRow()", "MsgNotSaved()"}));
    EXPECT_EQ(saved(), "1|5|a");
}

TEST_F(StaffFamily, ADeleteThatIsNotWantedKeepsTheRow)
{
    add(5, "five", "five", "IsMarried=1");
    addMember(1, 5, "a");
    const auto editor = editorOf(5);
    messages.answer({No});
    open(*editor, [&] {
        toFamily(*editor);
        press(*editor, Qt::Key_Delete);
        EXPECT_EQ(working(), "1|5|a");
        EXPECT_TRUE(editor->IsSaved());
    });
}

TEST_F(StaffFamily, AnEmployeeWithoutFamilySavesNone)
{
    add(5, "five", "five", "IsMarried=1");
    const auto editor = editorOf(5);
    open(*editor, [&] {
        toFamily(*editor);
        EXPECT_TRUE(Staff_DM->Family_QUR->isEmpty());
        press(*editor, Qt::Key_F3);
    });
    EXPECT_EQ(saved(), "");
    EXPECT_EQ(messages.take(), QStringList(savedMessage));
}

TEST_F(StaffFamily, SingleWithAFamilyTurnsBackToMarried)
{
    add(5, "five", "five", "IsMarried=1");
    addMember(1, 5, "a");
    const auto editor = editorOf(5);
    messages.answer({No});
    open(*editor, [&] {
        choose(*editor, editor->IsMarried_CMB, 0);
        EXPECT_EQ(messages.take(), QStringList("ShowSmartMessage:10100()"));
        EXPECT_EQ(messages.last().displayTime, 3000);
        EXPECT_EQ(messages.last().control, editor->IsMarried_CMB);
        EXPECT_EQ(editor->IsMarried_CMB->currentIndex(), 1);
        EXPECT_TRUE(editor->Staff_PC->isTabVisible(3));
    });
}

TEST_F(StaffFamily, SingleWithoutAFamilyHidesThePage)
{
    add(5, "five", "five", "IsMarried=1");
    const auto editor = editorOf(5);
    open(*editor, [&] {
        choose(*editor, editor->IsMarried_CMB, 0);
        EXPECT_FALSE(editor->Staff_PC->isTabVisible(3));
        press(*editor, Qt::Key_4, Qt::ControlModifier);
        EXPECT_EQ(editor->Staff_PC->currentIndex(), 0);
        choose(*editor, editor->IsMarried_CMB, 1);
        EXPECT_TRUE(editor->Staff_PC->isTabVisible(3));
        press(*editor, Qt::Key_4, Qt::ControlModifier);
        EXPECT_EQ(editor->Staff_PC->currentIndex(), 3);
        press(*editor, Qt::Key_F3);
    });
    EXPECT_EQ(messages.take(), QStringList(savedMessage));
}

TEST_F(StaffFamily, GoingOnFromTheFamilyPageStartsASingleEmployeeOnTheFirstPage)
{
    add(5, "five", "five", "IsMarried=1");
    addMember(1, 5, "a");
    const auto editor = editorOf(5);
    messages.answer({Yes, No});
    open(*editor, [&] {
        toFamily(*editor);
        press(*editor, Qt::Key_Delete);
        EXPECT_EQ(messages.take(), QStringList("MsgDeleteRow()"));
        press(*editor, Qt::Key_F3, Qt::ControlModifier);
        EXPECT_EQ(messages.take(), QStringList(savedMessage));
        EXPECT_EQ(editor->Code_EDT->GetText(), "6");
        EXPECT_EQ(editor->Staff_PC->currentIndex(), 0);
        EXPECT_FALSE(editor->Staff_PC->isTabVisible(3));
        EXPECT_TRUE(editor->Name_EDT->hasFocus());
        choose(*editor, editor->IsMarried_CMB, 1);
        press(*editor, Qt::Key_4, Qt::ControlModifier);
        EXPECT_EQ(editor->Staff_PC->currentIndex(), 3);
    });
    EXPECT_EQ(saved(), "");
    EXPECT_EQ(locks(), "");
}

TEST_F(StaffFamily, ThePageNeedsItsRight)
{
    add(5, "five", "five", "IsMarried=1");
    SeatUser(TUserInfo{7, "other", "other", false, true});
    db.run("insert into UserRight(UserCode,SoftwarePart,Permission) values(7,806,2)");
    const auto editor = editorOf(5);
    open(*editor, [&] {
        press(*editor, Qt::Key_2, Qt::ControlModifier);
        press(*editor, Qt::Key_4, Qt::ControlModifier);
        EXPECT_EQ(editor->Staff_PC->currentIndex(), 1);
        db.run("insert into UserRight(UserCode,SoftwarePart,Permission) values(7,806,8062)");
        press(*editor, Qt::Key_4, Qt::ControlModifier);
        EXPECT_EQ(editor->Staff_PC->currentIndex(), 3);
    });
    EXPECT_EQ(messages.take().size(), 1); // the host told about the refusal
}

TEST_F(StaffFamily, StayingAfterASaveReadsTheFamilyBack)
{
    add(5, "five", "five", "IsMarried=1");
    addMember(1, 5, "a");
    const auto editor = editorOf(5);
    open(*editor, [&] {
        press(*editor, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(working(), "1|5|a");
        EXPECT_EQ(saved(), "1|5|a");
        press(*editor, Qt::Key_F3);
    });
    EXPECT_EQ(saved(), "1|5|a");
    EXPECT_EQ(working(), "");
}

TEST_F(StaffFamily, RowsThatNobodyHoldsDoNotComeInBesideTheSavedOnes)
{
    add(5, "five", "five", "IsMarried=1");
    addMember(1, 5, "a");
    addMember(1, 5, "stale", "tmpStaffFamily");
    const auto editor = editorOf(5);
    open(*editor, [&] { EXPECT_EQ(working(), "1|5|a"); });
}
