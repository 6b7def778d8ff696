#include "host/forms/FakeScreens.h"
#include "support/LostAnswer.h"

namespace {

class SaveWithoutAnswer : public Things {};

// Checks compare what is typed with the loaded record, which is not the stored one once a save got no answer.
TEST_F(SaveWithoutAnswer, IsFollowedByOneThatLoadsWhatIsStoredAndKeepsWhatWasTyped)
{
    TThingGet_FRM editor;
    const int result = open(editor, [&] {
        Keys::type(editor.Title_EDT, "first");
        {
            const LostAnswer lost(db, "insert into Thing");
            Keys::press(&editor, Qt::Key_F3, Qt::ShiftModifier);
        }
        EXPECT_EQ(editor.Mode(), fmNew);
        Keys::retype(editor.Title_EDT, "second");
        editor.hooks.clear();
        {
            const LostAnswer lost(db, "update Thing");
            Keys::press(&editor, Qt::Key_F3, Qt::ShiftModifier);
        }
        EXPECT_EQ(editor.hooks, (QStringList{"LoadRecord", "Validate", "SaveRecord"}));
        EXPECT_EQ(editor.Mode(), fmEdit);
        EXPECT_EQ(titles(), "1|second");
        Keys::retype(editor.Title_EDT, "third");
        editor.hooks.clear();
        Keys::press(&editor, Qt::Key_F3);
        EXPECT_EQ(editor.hooks, (QStringList{"LoadRecord", "Validate", "SaveRecord", "BeforeClose"}));
    });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(titles(), "1|third");
}

} // namespace
