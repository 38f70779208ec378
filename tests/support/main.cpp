#include <QApplication>
#include <gtest/gtest.h>
#include "ledgers/AfterWork.h"
#include "shell/Dialogs.h"
#include "shell/InstanceLock.h"
#include "shell/QtScreens.h"
#include "shell/Session.h"
#include "slips/QtSlipPrint.h"
#include "slips/Slip_frm.h"
#include "entry/Utility.h"
#include "store/Sql.h"
#include "store/Store.h"

namespace {

// The process keeps registries that tests install into (dialogs, hooks, the session, kept
// screens); each test starts from the program's own defaults, whatever the one before left.
class ResetRegistries : public ::testing::EmptyTestEventListener {
    void OnTestEnd(const ::testing::TestInfo&) override
    {
        forgetScreenInstances();
        CloseStore();
        session() = Session();
        processInstanceLock().release();
        setDialogs(nullptr);
        setAfterWorkView(nullptr);
        setBusyTimeoutMs(30000);
        setLockWaitNotice({});
        takeStoreNotices();
        setZipChooser({});
        setPrinterQuestion({});
        setSlipPageDrawer({});
        Slip_frm::setLookup({});
        Slip_frm::setPlainQuestion({});
        Slip_frm::setSlipListPicker({});
    }
};

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::UnitTest::GetInstance()->listeners().Append(new ResetRegistries);
    return RUN_ALL_TESTS();
}
