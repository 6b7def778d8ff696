#include "payrollinfo/Screens.h"

using namespace Qt::Literals::StringLiterals;

TEST_F(PayrollItem, AnItemIsLinkedByTypingTheCode)
{
    const int result = show(earning, 0, [&](TPayrollInfoDetail_FRM &screen) {
        EXPECT_EQ(screen.Title1_LBL->text(),
                  db.text(QString("select Title from PayrollInfoDetail where ID=%1").arg(earning)));
        Keys::retype(screen.FiscalDeducationCode_EDT, "901");
        Keys::press(&screen, Qt::Key_Return);
        EXPECT_EQ(screen.Code_LBL->text(), "earning");
        Keys::picture(&screen, "payrollinfo-item");
        Keys::press(&screen, Qt::Key_F3);
    });
    EXPECT_EQ(result, int(QDialog::Accepted));
    EXPECT_EQ(linkOf(earning), "901");
}

TEST_F(PayrollItem, AnEarningsCodeIsNoDeductionsCode)
{
    show(deduction, 1, [&](TPayrollInfoDetail_FRM &screen) {
        const QString before = linkOf(deduction);
        Keys::retype(screen.FiscalDeducationCode_EDT, "901");
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList{u("MsgCodeNotAvailable(کسورات)")});
        EXPECT_TRUE(screen.FiscalDeducationCode_EDT->IsEmpty());
        EXPECT_TRUE(screen.Code_LBL->text().isEmpty());
        EXPECT_EQ(linkOf(deduction), before) << "an input that was cleared stops the save";
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList{u("MsgRequiredField(کد)")});
        EXPECT_TRUE(screen.FiscalDeducationCode_EDT->hasFocus());
        messages.answer({TAnswer::No});
    });
}

TEST_F(PayrollItem, ACodeIsLookedUpToo_WhenTheQuestionOfClosingIsAnsweredWithYes)
{
    db.run(u"update PayrollInfoDetail set UserCode=901 where ID=%1"_s.arg(earning));
    messages.whenShown(&Keys::leaveAll);
    for (const char *wrong : {"999", "902"}) {
        messages.take();
        show(earning, 0, [&](TPayrollInfoDetail_FRM &screen) {
            Keys::retype(screen.FiscalDeducationCode_EDT, wrong);
            messages.answer({TAnswer::Yes});
            Keys::press(&screen, Qt::Key_Escape);
            EXPECT_EQ(messages.take(), (QStringList{u("MsgNotSaved()"), u("MsgCodeNotAvailable(مزايا)")}));
            EXPECT_TRUE(screen.isVisible());
            messages.answer({TAnswer::No});
        });
    }
    EXPECT_EQ(linkOf(earning), "901");
}

TEST_F(PayrollItem, ACodeThatWasLookedUpIsNotLookedUpAgainWhereTheUserIsNoLongerAtIt)
{
    show(earning, 0, [&](TPayrollInfoDetail_FRM &screen) {
        Keys::retype(screen.FiscalDeducationCode_EDT, "901");
        Keys::press(&screen, Qt::Key_Tab);
        EXPECT_EQ(screen.Code_LBL->text(), "earning");
        const auto before = db.trace().size();
        Keys::press(&screen, Qt::Key_F3);
        for (const QString &statement : db.trace().mid(before))
            EXPECT_FALSE(statement.contains("from Fiscal ", Qt::CaseInsensitive)) << statement.toStdString();
    });
    EXPECT_EQ(linkOf(earning), "901");
}

TEST_F(PayrollItem, AnUnknownEarningIsNamedSo)
{
    show(earning, 0, [&](TPayrollInfoDetail_FRM &screen) {
        Keys::retype(screen.FiscalDeducationCode_EDT, "777");
        Keys::press(&screen, Qt::Key_Return);
        EXPECT_EQ(messages.take(), QStringList{u("MsgCodeNotAvailable(مزايا)")});
        messages.answer({TAnswer::No});
    });
}

TEST_F(PayrollItem, AnEarningWithoutATitleIsLinkedAllTheSame)
{
    db.run("insert into Fiscal(Code) values(903)");
    for (int opening = 0; opening < 2; ++opening) {
        const int result = show(earning, 0, [&](TPayrollInfoDetail_FRM &screen) {
            Keys::retype(screen.FiscalDeducationCode_EDT, "903");
            Keys::press(&screen, Qt::Key_F3);
            EXPECT_FALSE(screen.isVisible());
        });
        EXPECT_EQ(result, 1);
        EXPECT_EQ(messages.take(), QStringList());
        EXPECT_EQ(linkOf(earning), "903");
    }
}

TEST_F(PayrollItem, AWrongCodeIsToldOnceAndTheEmptyInputThenAskedFor)
{
    show(earning, 0, [&](TPayrollInfoDetail_FRM &screen) {
        Keys::retype(screen.FiscalDeducationCode_EDT, "901");
        Keys::press(&screen, Qt::Key_Tab);
        EXPECT_EQ(screen.Code_LBL->text(), "earning");
        Keys::retype(screen.FiscalDeducationCode_EDT, "");
        Keys::press(&screen, Qt::Key_Tab);
        EXPECT_EQ(screen.Code_LBL->text(), "");
        EXPECT_EQ(messages.take(), QStringList());
        Keys::retype(screen.FiscalDeducationCode_EDT, "902"); // a deduction's
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList{u("MsgCodeNotAvailable(مزايا)")});
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList{u("MsgRequiredField(کد)")});
        EXPECT_TRUE(screen.FiscalDeducationCode_EDT->hasFocus());
        Keys::type(screen.FiscalDeducationCode_EDT, u("۹۰۱"));
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_FALSE(screen.isVisible());
    });
    EXPECT_EQ(linkOf(earning), "901");
}

TEST_F(PayrollItem, TheSelectionButtonPutsTheChosenCodeIn)
{
    RegisterEntityPicker(cspDeduction, [](const QString &) { return 902; });
    show(deduction, 1, [&](TPayrollInfoDetail_FRM &screen) {
        screen.FiscalDeducationCode_EDT->setFocus();
        Keys::press(&screen, Qt::Key_F2);
        EXPECT_EQ(screen.FiscalDeducationCode_EDT->GetText(), "902");
        EXPECT_EQ(screen.Code_LBL->text(), "deduction");
        EXPECT_FALSE(screen.IsSaved());
        Keys::press(&screen, Qt::Key_F3);
    });
    RegisterEntityPicker(cspDeduction, nullptr);
    EXPECT_EQ(linkOf(deduction), "902");
}

TEST_F(PayrollItem, NothingChosenLeavesTheCodeAsTyped)
{
    RegisterEntityPicker(cspFiscal, [](const QString &) { return 0; });
    show(earning, 0, [&](TPayrollInfoDetail_FRM &screen) {
        Keys::retype(screen.FiscalDeducationCode_EDT, "901");
        Keys::press(&screen, Qt::Key_F2);
        EXPECT_EQ(screen.FiscalDeducationCode_EDT->GetText(), "901");
        messages.answer({TAnswer::No});
    });
    RegisterEntityPicker(cspFiscal, nullptr);
}

TEST_F(PayrollItem, ARefusedLinkTellsSoAndStaysOpen)
{
    show(earning, 0, [&](TPayrollInfoDetail_FRM &screen) {
        Keys::retype(screen.FiscalDeducationCode_EDT, "901");
        Keys::press(&screen, Qt::Key_Return);
        db.failStatement(2, TFault::Locked); // behind the right to save
        Keys::press(&screen, Qt::Key_F3);
        db.failStatement(0);
        EXPECT_EQ(messages.take(), QStringList{u("MSGFinishedNotSuccessfully(ذخيره سازي)")});
        EXPECT_TRUE(screen.isVisible());
        EXPECT_EQ(screen.FiscalDeducationCode_EDT->GetText(), "901");
        messages.answer({TAnswer::No});
    });
}

TEST_F(PayrollItem, TheEditorsGridShowsTheLinksAndOpensThemByEnter)
{
    PayrollInfoEditor::show([&](TPayrollInfoGet_FRM &screen) {
        screen.Payroll_PC->setCurrentIndex(1);
        auto *grid = Keys::find<TSmartGrid_ZLM>(&screen, "PAyrollInfDB_List_TableView");
        ASSERT_NE(grid, nullptr);
        EXPECT_EQ(grid->model()->rowCount(), db.text("select count(*) from PayrollInfoDetail").toInt());
        data.PayrollDetailList_QUR->moveTo(data.PayrollDetailList_QUR->rowOfKey(earning));
        grid->setFocus();
        Keys::runModal(
            [&] {
                Keys::press(&screen, Qt::Key_Return);
                return 0;
            },
            [&](QWidget *item) {
                Keys::retype(Keys::child(item, "FiscalDeducationCode_EDT"), "901");
                Keys::press(item, Qt::Key_F3);
            });
        EXPECT_EQ(data.PayrollDetailList_QUR->asString("UserTitle"), "earning");
        EXPECT_EQ(data.PayrollDetailList_QUR->asInteger("ID"), earning) << "the row stays current";
        Keys::picture(&screen, "payrollinfo-items");
    });
}

TEST_F(PayrollItem, TheEditButtonAndADoubleClickOpenTheCurrentItem)
{
    PayrollInfoEditor::show([&](TPayrollInfoGet_FRM &screen) {
        screen.Payroll_PC->setCurrentIndex(1);
        auto *grid = Keys::find<TSmartGrid_ZLM>(&screen, "PAyrollInfDB_List_TableView");
        const auto opens = [&](const std::function<void()> &action) {
            QString title;
            Keys::runModal(
                [&] {
                    action();
                    return 0;
                },
                [&](QWidget *item) {
                    title = Keys::find<QLabel>(item, "Title1_LBL")->text();
                    Keys::press(item, Qt::Key_Escape);
                });
            return title;
        };
        const auto current = [&] { return data.PayrollDetailList_QUR->asString("Title"); };
        data.PayrollDetailList_QUR->moveTo(2);
        QString opened = opens([&] { Keys::find<QAbstractButton>(&screen, "EditRow_BTN")->click(); });
        EXPECT_EQ(opened, current());
        const QPoint at = grid->visualRect(grid->model()->index(1, 1)).center();
        opened = opens([&] {
            QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, at);
            QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, at);
        });
        EXPECT_EQ(opened, current());
        EXPECT_EQ(data.PayrollDetailList_QUR->position(), 1);
    });
}

TEST_F(PayrollItem, AnItemLinkedToSomethingThatIsGoneSaysSoOnOpening)
{
    db.run(QString("update PayrollInfoDetail set UserCode=777 where ID=%1").arg(deduction));
    show(deduction, 1, [&](TPayrollInfoDetail_FRM &screen) {
        EXPECT_EQ(messages.take().size(), 1);
        EXPECT_TRUE(screen.FiscalDeducationCode_EDT->IsEmpty());
        EXPECT_EQ(screen.FiscalDeducationCode_EDT->MaxLength(), 6);
        EXPECT_TRUE(screen.IsSaved());
    });
    EXPECT_EQ(linkOf(deduction), "777");
}

TEST_F(PayrollItem, ShowsItsTextsAsGiven)
{
    show(earning, 0, [&](TPayrollInfoDetail_FRM &screen) {
        QStringList captions;
        for (const QLabel *label : screen.findChildren<QLabel *>())
            if (label->objectName().isEmpty())
                captions << label->text();
        EXPECT_EQ(captions, QStringList(u"  عنوان :"_s));
        EXPECT_EQ(Keys::find<QLabel>(&screen, "FiscalDeducationCode_EDT_Caption")->text(), u"  &کد :"_s);
        // Its yeh is the Persian one, unlike the one of the editor behind it.
        EXPECT_EQ(screen.Save_BTN->text(), u"ذخیره F3"_s);
        EXPECT_EQ(screen.EXit_BTN->text(), u"خروج Esc"_s);
    });
}

TEST_F(PayrollItem, TheSelectionButtonOfAnEarningOffersEarnings)
{
    RegisterEntityPicker(cspFiscal, [](const QString &) { return 901; });
    show(earning, 0, [&](TPayrollInfoDetail_FRM &screen) {
        screen.FiscalDeducationCode_EDT->setFocus();
        Keys::press(&screen, Qt::Key_F2);
        EXPECT_EQ(screen.FiscalDeducationCode_EDT->GetText(), "901");
        EXPECT_EQ(screen.Code_LBL->text(), "earning");
        EXPECT_FALSE(screen.IsSaved());
        messages.answer({TAnswer::No});
    });
    RegisterEntityPicker(cspFiscal, nullptr);
}

TEST_F(PayrollItem, SaveAndNewSavesAndClosesSinceItemsAreNeverAdded)
{
    const QString items = db.text("select count(*) from PayrollInfoDetail");
    const int result = show(earning, 0, [&](TPayrollInfoDetail_FRM &screen) {
        Keys::retype(screen.FiscalDeducationCode_EDT, "901");
        Keys::press(&screen, Qt::Key_F3, Qt::ControlModifier);
        EXPECT_FALSE(screen.isVisible());
    });
    EXPECT_EQ(result, int(QDialog::Accepted));
    EXPECT_EQ(linkOf(earning), "901");
    EXPECT_EQ(db.text("select count(*) from PayrollInfoDetail"), items);
}

TEST_F(PayrollItem, ACodeThatCannotBeLookedUpIsNotSaved)
{
    const QString before = linkOf(earning);
    show(earning, 0, [&](TPayrollInfoDetail_FRM &screen) {
        Keys::retype(screen.FiscalDeducationCode_EDT, "777");
        db.failStatement(1, TFault::Locked);
        Keys::press(&screen, Qt::Key_F3);
        db.failStatement(0);
        EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()"));
        EXPECT_TRUE(screen.isVisible());
        EXPECT_EQ(screen.FiscalDeducationCode_EDT->GetText(), "777");
        EXPECT_EQ(linkOf(earning), before);
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"MsgCodeNotAvailable(مزايا)"_s));
        messages.answer({TAnswer::No});
    });
    EXPECT_EQ(linkOf(earning), before);
}

TEST_F(PayrollItem, ACodeWhoseLookUpFailedWhenItWasLeftIsLookedUpBySaving)
{
    db.run(u"update PayrollInfoDetail set UserCode=901 where ID=%1"_s.arg(earning));
    show(earning, 0, [&](TPayrollInfoDetail_FRM &screen) {
        EXPECT_EQ(screen.Code_LBL->text(), "earning");
        Keys::retype(screen.FiscalDeducationCode_EDT, "777");
        db.failStatement(1, TFault::Locked);
        Keys::press(&screen, Qt::Key_Return);
        db.failStatement(0);
        EXPECT_EQ(messages.take(), QStringList("MsgDatabaseError()"));
        EXPECT_FALSE(screen.FiscalDeducationCode_EDT->hasFocus());
        EXPECT_EQ(screen.Code_LBL->text(), "") << "no title of another code beside it";
        Keys::press(&screen, Qt::Key_F3);
        EXPECT_EQ(messages.take(), QStringList(u"MsgCodeNotAvailable(مزايا)"_s));
        EXPECT_TRUE(screen.isVisible());
        messages.answer({TAnswer::No});
    });
    EXPECT_EQ(linkOf(earning), "901");
}
