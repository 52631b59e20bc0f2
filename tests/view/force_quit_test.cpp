#include "platform/memory/memory_desktop.hpp"
#include "platform/x11/force_quit/force_quit_view_model.hpp"

#include <QAbstractItemModelTester>
#include <QCoreApplication>
#include <QSignalSpy>
#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace orvel::x11 {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr ProcessId kOwn = 99;

class ForceQuit : public testing::Test {
protected:
    ForceQuit() {
        run(1, "Editor");
        run(2, "Terminal");
        run(3, "Browser");
        run(kOwn, "Force Quit");
    }

    void run(ProcessId pid, const std::string& name) {
        RunningApplication application;
        application.pid = pid;
        application.name = name;
        desk.world.apps.push_back(application);
    }
    void end(ProcessId pid) {
        std::erase_if(desk.world.apps, [pid](const auto& each) { return each.pid == pid; });
    }
    std::vector<std::string> names() const {
        std::vector<std::string> all;
        for (const auto& row : model.rows().get()) all.push_back(row.name);
        return all;
    }

    memory::MemoryDesktop desk;
    std::vector<ProcessId> ended;
    ForceQuitModel model{desk.workspace, kOwn, [this](ProcessId pid) { ended.push_back(pid); }};
};

TEST_F(ForceQuit, ListsOtherApplicationsAndChoosesAnother) {
    model.refresh();
    EXPECT_THAT(names(), ElementsAre("Editor", "Terminal", "Browser"));
    model.choose(2);
    EXPECT_EQ(model.chosenPlace(), 1);
    model.choose(kOwn);
    EXPECT_EQ(model.chosenPlace(), 1);
}

TEST_F(ForceQuit, EndsOnlyWhatWasConfirmed) {
    model.refresh();
    model.choose(3);
    model.confirm();
    EXPECT_THAT(ended, IsEmpty());
    model.askToQuit();
    model.withdraw();
    model.confirm();
    EXPECT_THAT(ended, IsEmpty());
    model.askToQuit();
    model.confirm();
    EXPECT_THAT(ended, ElementsAre(3));
    EXPECT_FALSE(model.isAsking());
}

TEST_F(ForceQuit, KeysMoveTheChoiceAndStopAtTheEnds) {
    model.refresh();
    model.choose(1);
    model.moveChoice(-1);
    EXPECT_EQ(model.chosenPlace(), 0);
    model.moveChoice(1);
    EXPECT_EQ(model.chosenPlace(), 1);
    model.moveChoice(5);
    EXPECT_EQ(model.chosenPlace(), 2);
}

TEST_F(ForceQuit, TheQuestionEndsWithItsApplicationAndTheNeighbourIsChosen) {
    model.refresh();
    model.choose(2);
    model.askToQuit();
    end(2);
    model.refresh();
    EXPECT_FALSE(model.isAsking());
    EXPECT_EQ(model.chosen()->name, "Browser");
    end(3);
    model.refresh();
    EXPECT_EQ(model.chosen()->name, "Editor");
    end(1);
    model.refresh();
    EXPECT_EQ(model.chosen(), nullptr);
    model.askToQuit();
    EXPECT_FALSE(model.isAsking());
}

TEST_F(ForceQuit, TheListChangesRowByRow) {
    model.refresh();
    ForceQuitList list(model);
    const QAbstractItemModelTester tester(&list);
    const QSignalSpy resets(&list, &QAbstractItemModel::modelReset);
    end(2);
    run(4, "Mail");
    model.refresh();
    EXPECT_EQ(list.rowCount({}), 3);
    EXPECT_EQ(list.index(2).data(ForceQuitList::nameRole).toString(), "Mail");
    desk.world.apps.front().name = "Editor 2";
    model.refresh();
    EXPECT_EQ(list.index(0).data(ForceQuitList::nameRole).toString(), "Editor 2");
    std::swap(desk.world.apps[0], desk.world.apps[1]);
    model.refresh();
    EXPECT_EQ(list.index(1).data(ForceQuitList::nameRole).toString(), "Editor 2");
    EXPECT_EQ(list.rowCount({}), 3);
    EXPECT_EQ(resets.size(), 0);
}

TEST_F(ForceQuit, EscapeLeavesTheQuestionFirstAndThenTheWindow) {
    model.refresh();
    model.choose(1);
    int closed = 0;
    ForceQuitViewModel view(model, [&closed] { ++closed; });
    view.askToQuit();
    EXPECT_TRUE(view.question().contains("Editor"));
    view.escape();
    EXPECT_FALSE(view.isAsking());
    EXPECT_EQ(closed, 0);
    view.escape();
    EXPECT_EQ(closed, 1);
}

}  // namespace
}  // namespace orvel::x11

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
