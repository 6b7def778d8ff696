#include "waits/Waits.h"

#include "host/Message_ZLM/WindowWait.h"
#include "host/NewBaseForms_PKG/HostWindows_UNT.h"

namespace {

// A save that is given up at its first, its second ... its last request.
class GivenUpSave : public Waits {
protected:
    GivenUpSave()
    {
        SetUsualAnswerWait(&m_quick);
        goBehindLine();
    }
    ~GivenUpSave() override { SetUpHostWindows(); }

    enum TWhen { BeforeTheServer, AfterTheServer };
    /// Saves with the request given up, as often as it takes; false when the save has fewer requests.
    bool save(TStaffGet_FRM &editor, int request, TWhen when)
    {
        bool isGivenUp = false;
        if (when == BeforeTheServer)
            play->goSilentAt(request);
        else
            play->goSilentAfter(request);
        whenPanel([&] {
            isGivenUp = true;
            pressInFront(Qt::Key_Escape);
        });
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
            if (isGivenUp && play->isSilent() && AnswerWait().isWaiting() && panel())
                pressInFront(Qt::Key_Escape); // what is asked after it is given up, too
        });
        poll.start(5);
        messages.answer({TAnswer::Yes, TAnswer::Yes, TAnswer::Yes});
        Keys::press(&editor, Qt::Key_F3);
        forgetPanel();
        play->speak();
        Keys::waitFor([] { return !AnswerWait().isWaiting(); });
        return isGivenUp;
    }
    void everyRequest(TWhen when)
    {
        play->setHearsCancel(true);
        int givenUp = 0;
        for (int request = 1; request < 100; ++request) {
            const QString name = u"نام تازه %1"_s.arg(request);
            bool wasGivenUp = false;
            TStaffGet_FRM editor(cspStaff, false, "1");
            Keys::runModal(
                [&] { return editor.exec(); },
                [&](QWidget *shown) {
                    Keys::waitFor([&] { return shown->isActiveWindow(); });
                    Keys::retype(editor.Name_EDT, name);
                    Keys::retype(editor.LastName_EDT, u"خانواده"_s);
                    messages.take();
                    wasGivenUp = save(editor, request, when);
                    EXPECT_EQ(editor.Name_EDT->text(), name) << request;
                    if (wasGivenUp) {
                        if (!editor.isVisible()) { // what was given up came after the save
                            EXPECT_TRUE(messages.take().contains(u"MSGCompeletedSuccessfully(ذخيره سازي )"_s))
                                << request;
                            return;
                        }
                        Keys::press(&editor, Qt::Key_F3);
                    }
                    EXPECT_EQ(editor.Name_EDT->text(), name) << request;
                });
            EXPECT_EQ(
                watcher.scalar(TStatement("select count(*) from Staff where Name=").value(name)).toInt(), 1)
                << request << ' ' << messages.take().join(u' ').toStdString();
            watcher.execute(TStatement("delete from Staff")); // their numbers are free again
            if (!wasGivenUp)
                break;
            ++givenUp;
        }
        std::printf("given up at %d requests\n", givenUp);
        EXPECT_GT(givenUp, 5);
        EXPECT_LT(givenUp, 99);
    }

private:
    TWindowWait m_quick{30};
};

TEST_F(GivenUpSave, StoresNothingTwiceAndLosesNothingWhenTheServerNeverSawTheRequest)
{
    everyRequest(BeforeTheServer);
}

TEST_F(GivenUpSave, StoresNothingTwiceAndLosesNothingWhenTheServerHadDoneIt)
{
    everyRequest(AfterTheServer);
}

} // namespace
