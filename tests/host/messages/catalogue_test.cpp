#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include "host/Declaration_PKG/MessageCatalogue.h"
#include "host/Declaration_PKG/Specialmessages.h"
#include "host/Message_ZLM/Message_ZLM.h"

#include <QLineEdit>
#include <QSet>

#include <gtest/gtest.h>

using MessageCatalogue::entries;

namespace {

QString persian(const char *text)
{
    return QString::fromUtf8(text);
}

} // namespace

TEST(Catalogue, EveryNumberThatAScreenOrAControlUsesHasAnEntry)
{
    for (int number : {7,     8,     10,    11,    12,    13,    10060, 10061, 10100, 10120,
                       10121, 10122, 10232, 10233, 10234, 10249, 10250, 10251, 10310, 20106})
        EXPECT_TRUE(MessageCatalogue::find(number)) << number;
    EXPECT_EQ(MessageCatalogue::find(1), nullptr);
}

TEST(Catalogue, EveryEntryIsAPersianSentenceUnderANumberOfItsOwn)
{
    QSet<int> numbers;
    for (const auto &entry : entries()) {
        EXPECT_FALSE(numbers.contains(entry.number)) << entry.number;
        numbers << entry.number;
        EXPECT_TRUE(entry.text.endsWith(u'.') || entry.text.endsWith(QChar(0x061F)) ||
                    entry.text.back().isDigit())
            << entry.number;
        bool persianLetters = false;
        for (const QChar c : entry.text) {
            persianLetters |= c.script() == QChar::Script_Arabic;
            EXPECT_NE(c, QChar(0x064A)) << entry.number << ": the catalogue writes the Persian yeh";
            EXPECT_NE(c, QChar(0x0643)) << entry.number << ": the catalogue writes the Persian kaf";
        }
        EXPECT_TRUE(persianLetters) << entry.number;
    }
}

TEST(Catalogue, QuestionsAskAndNotificationsTell)
{
    for (const auto &entry : entries())
        EXPECT_EQ(entry.icon == miQuestion, entry.text.endsWith(QChar(0x061F))) << entry.number;
}

TEST(Catalogue, ArgumentsFillTheirPlacesInOnePass)
{
    EXPECT_EQ(MessageCatalogue::fill("a %1 b %2", {"%2", "x"}), "a %2 b x");
    EXPECT_EQ(MessageCatalogue::fill("100% %1", {"x"}), "100% x");
    EXPECT_EQ(MessageCatalogue::fill("%1 %2", {"x"}), "x ");
    EXPECT_EQ(MessageCatalogue::fill("%", {"x"}), "%");
}

TEST(Catalogue, ALongArgumentDoesNotFillTheScreen)
{
    const QString filled = MessageCatalogue::fill("%1", {QString(10000, u'x')});
    EXPECT_LT(filled.size(), 300);
    EXPECT_EQ(MessageCatalogue::fill("%1", {"a\nb"}), "a b");
}

class Messages : public testing::Test {
protected:
    ScriptedMessages messages;
    QLineEdit input;
};

TEST_F(Messages, WordsArePassedOnByteForByte)
{
    const QString action = persian("ذخيره سازي ");
    MSGCompeletedSuccessfully(action);
    MSGFinishedNotSuccessfully(action, persian("ذخيره سازي"));
    MsgRepeatedField(persian("کد"), {}, &input, nullptr);
    EXPECT_EQ(messages.take(), (QStringList{persian("MSGCompeletedSuccessfully(ذخيره سازي )"),
                                            persian("MSGFinishedNotSuccessfully(ذخيره سازي |ذخيره سازي)"),
                                            persian("MsgRepeatedField(کد|)")}));
}

TEST_F(Messages, TheSentenceHoldsTheWords)
{
    const QString word = persian("کد پرسنلي");
    MsgRequiredField(word, &input, nullptr);
    EXPECT_TRUE(messages.last().text.contains(word + persian(" را ")));
    MsgRepeatedField(word, persian("کارمندان"), &input, nullptr);
    EXPECT_TRUE(messages.last().text.contains(word));
    EXPECT_TRUE(messages.last().text.contains(persian("کارمندان")));
    MsgCodeNotAvailable(persian("جدول مالياتي"), &input, nullptr);
    EXPECT_TRUE(messages.last().text.contains(persian("جدول مالياتي")));
    for (const auto &raise :
         {+[](const QString &entity) { MsgHasSubRecords(entity); }, MSGInUse, MsgNotEntered}) {
        raise(word);
        EXPECT_TRUE(messages.last().text.contains(word));
    }
    NotZeroValue(word, &input);
    EXPECT_TRUE(messages.last().text.contains(word));
    SelectBefore(word, &input);
    EXPECT_TRUE(messages.last().text.contains(word));
    NotSaveable(persian("کليه کارمندان"), persian("کارمندی"), &input);
    EXPECT_TRUE(messages.last().text.contains(persian("کليه کارمندان")));
    EXPECT_TRUE(messages.last().text.contains(persian("کارمندی")));
}

TEST_F(Messages, ACaptionThatBringsItsParticleGetsNoSecondOne)
{
    MsgRequiredField(persian("حساب کارمند را به طور کامل"), &input, nullptr);
    EXPECT_EQ(messages.last().text.count(persian("را")), 1);
}

TEST_F(Messages, TheInputConcernedAndTheScreenComeAlong)
{
    QWidget screen;
    MsgRequiredField("x", &input, &screen);
    EXPECT_EQ(messages.last().control, &input);
    EXPECT_EQ(messages.last().form, &screen);
    EXPECT_EQ(messages.last().shape, TMessageShape::Dialog);
    MsgNotEntered("x");
    EXPECT_FALSE(messages.last().control);
}

TEST_F(Messages, ATimedNotificationIsABalloonAndOneWithoutTimeADialog)
{
    ShowSmartMessage(10233, &input, nullptr, 3000);
    EXPECT_EQ(messages.last().shape, TMessageShape::Balloon);
    EXPECT_EQ(messages.last().displayTime, 3000);
    EXPECT_EQ(messages.last().number, 10233);
    ShowSmartMessage(10250, nullptr, nullptr, 0, {"12"});
    EXPECT_EQ(messages.last().shape, TMessageShape::Dialog);
    EXPECT_TRUE(messages.last().text.contains("12"));
    EXPECT_EQ(messages.take(), (QStringList{"ShowSmartMessage:10233()", "ShowSmartMessage:10250(12)"}));
}

TEST_F(Messages, ANumberThatIsNotThereStillSaysSomething)
{
    ShowSmartMessage(4711, &input, nullptr, 0);
    EXPECT_TRUE(messages.last().text.contains("4711"));
}

TEST_F(Messages, AFreeWarningKeepsItsTextAndDetail)
{
    const QString text = QString(5000, u'x') + "%1\n";
    ShowSmartMessage(text, "detail", miError);
    EXPECT_EQ(messages.last().text, text + "\ndetail");
    EXPECT_EQ(messages.last().icon, miError);
    EXPECT_EQ(messages.last().words, (QStringList{text, "detail"}));
    ShowSmartMessage("x", {}, miWarning);
    EXPECT_EQ(messages.last().words, QStringList("x"));
}

TEST_F(Messages, QuestionsHaveTheirButtonsAndDefaults)
{
    using enum TAnswer;
    messages.answer({Yes, Cancel, Yes});
    EXPECT_TRUE(MsgDeleteRow());
    EXPECT_EQ(messages.last().buttons, TMessageButtons::YesNo);
    EXPECT_EQ(messages.last().defaultAnswer, No) << "a delete needs a deliberate key";
    EXPECT_EQ(MsgNotSaved(), Cancel);
    EXPECT_EQ(messages.last().buttons, TMessageButtons::YesNoCancel);
    EXPECT_EQ(ShowSmartMessage(20106, TMessageButtons::YesNo, Yes), Yes);
    EXPECT_EQ(messages.last().shape, TMessageShape::Question);
    EXPECT_EQ(messages.last().number, 20106);
}

TEST_F(Messages, AFailedSaveSaysWhyWhenTheConnectionKnows)
{
    TestDatabase db;
    MSGFinishedNotSuccessfully("x");
    const QString plain = messages.last().text;
    const TDatabaseError full(TFault::DiskFull, "no space");
    db.connection().noteError(full);
    MSGFinishedNotSuccessfully("x");
    EXPECT_EQ(messages.last().text, plain + u'\n' + full.userText());
}

TEST_F(Messages, ADatabaseErrorIsToldInItsPersianSentence)
{
    const TDatabaseError locked(TFault::Locked, "english words");
    MsgDatabaseError(locked);
    EXPECT_EQ(messages.last().text, locked.userText());
    EXPECT_EQ(messages.last().icon, miError);
    EXPECT_FALSE(messages.last().text.contains("english"));
}

TEST_F(Messages, ATooltipKeepsItsArguments)
{
    ShowTooltipMessage("words", &input, 3000, 4, QColor(192, 192, 192), 0, 250);
    EXPECT_EQ(messages.take(), QStringList("ShowTooltipMessage(words)"));
    EXPECT_EQ(messages.last().shape, TMessageShape::Balloon);
    EXPECT_EQ(messages.last().displayTime, 3000);
    EXPECT_EQ(messages.last().width, 250);
    EXPECT_EQ(messages.last().color, QColor(192, 192, 192));
    EXPECT_EQ(messages.last().icon, miWarning);
    EXPECT_EQ(messages.last().control, &input);
}
