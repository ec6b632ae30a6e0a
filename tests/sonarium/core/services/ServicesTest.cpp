#include "HostFixture.h"

#include "sonarium/core/model/ProjectEdit.h"

using namespace sn;

TEST_F(HostTest, ClipboardAnnouncesReleasesWhileStillHoldingTheObjects)
{
    Open(L"AudioObjects\n  Default Work Unit : WorkUnit\n    Rain : SoundSFX\n    Wind : SoundSFX\n");
    auto* clipboard = g_serviceProviderInstance->Get<IObjectClipboardService>(ServiceId_ObjectClipboard);
    ASSERT_TRUE(clipboard);
    ProjectObject* rain = At(L"AudioObjects/Default Work Unit/Rain");
    clipboard->SetObjects({rain, At(L"AudioObjects/Default Work Unit/Wind")}, 1);

    struct Watcher
    {
        IObjectClipboardService* clipboard;
        size_t heldWhenAnnounced = 0;
        void OnNotify(CNotifyItemBase*)
        {
            std::vector<IOrbObject*> held;
            clipboard->GetObjects(held);
            heldWhenAnnounced = held.size();
            for (IOrbObject* object : held)
                object->Release();
        }
    } watcher{clipboard};
    const ROString channel("Clipboard");
    INotifyMgr::m_pInstance->Register(channel, NotifyDelegate(&watcher, &Watcher::OnNotify));

    // A deleted object stays alive while the clipboard holds it, and is freed after.
    ProjectEdit::Delete(rain);
    EXPECT_EQ(L"Rain", rain->GetName());
    clipboard->Clear();
    EXPECT_EQ(2u, watcher.heldWhenAnnounced);
    EXPECT_EQ(0u, clipboard->GetFlags());
    watcher.heldWhenAnnounced = 0;
    clipboard->Clear();
    EXPECT_EQ(0u, watcher.heldWhenAnnounced) << "nothing left, nothing announced";
    INotifyMgr::m_pInstance->UnRegister(channel, NotifyDelegate(&watcher, &Watcher::OnNotify));
}

TEST_F(HostTest, ServicesByNumberAndCommandsByName)
{
    EXPECT_EQ(nullptr, g_serviceProviderInstance->GetService(999));
    auto* commands = g_serviceProviderInstance->Get<CommandService>(ServiceId_Commands);
    ASSERT_TRUE(commands);
    const ROString show("ShowBatchRename");
    EXPECT_FALSE(commands->HasCommand(show));
    EXPECT_FALSE(commands->ExecuteCommand(show, 0, 0, 0, 0, 0));
    int calls = 0;
    HostRef().CommandRegistry().Register(show, [&](uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t) {
        ++calls;
        return true;
    });
    EXPECT_TRUE(commands->ExecuteCommand(show, 0, 0, 0, 0, 0));
    EXPECT_EQ(1, calls);

    auto* editing = g_serviceProviderInstance->Get<IEditingCapabilityService>(ServiceId_EditingCapabilities);
    EXPECT_TRUE(editing->IsObjectTypeAllowed(OrbObjectType_Sound));
    HostRef().Capabilities().SetObjectTypeAllowed(OrbObjectType_Sound, false);
    EXPECT_FALSE(editing->IsObjectTypeAllowed(OrbObjectType_Sound));

    m_host.reset();
    EXPECT_EQ(nullptr, g_serviceProviderInstance) << "singletons end with their host";
    EXPECT_EQ(nullptr, INotifyMgr::m_pInstance);
}
