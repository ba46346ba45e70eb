#include "widgets/dialogs/OpenPanels.h"

#include "tests/support/HostileNames.h"
#include "tests/support/ScratchTree.h"
#include "tests/widgets/dialogs/OpenWindows.h"
#include "widgets/dialogs/ApplicationPanel.h"
#include "widgets/dialogs/FolderModel.h"

#include <QAbstractItemModelTester>
#include <QLineEdit>
#include <QListView>
#include <QLocale>

namespace veilkeep::test {
namespace {

QListView& listOf(const ItemPanel& panel) {
    for (QListView* const list : panel.findChildren<QListView*>())
        if (dynamic_cast<FolderModel*>(list->model()))
            return *list;
    throw std::logic_error("no list");
}

FolderModel& modelOf(const ItemPanel& panel) {
    return dynamic_cast<FolderModel&>(*listOf(panel).model());
}

void clickName(const ItemPanel& panel, const std::string& name) {
    ASSERT_TRUE(eventually([&] { return modelOf(panel).rowOf(name).has_value(); })) << name;
    const QListView& list = listOf(panel);
    const QRect row = list.visualRect(list.model()->index(*modelOf(panel).rowOf(name), 0));
    realInput::click(*list.viewport(), QPoint(row.left() + 30, row.center().y()));
}

class OpenPanelsTest : public ::testing::Test {
protected:
    OpenPanelsTest() {
        QLocale::setDefault(QLocale(QLocale::English)); // the C locale sorts by code points alone
        for (const char* const name :
             {"items/file 2.txt", "items/file 10.txt", "items/.secret", "items/folder/inside",
              "items/folder/.hidden/deep", "items/\xff\xfe bytes"})
            m_tree.makeFile(name);
        m_tree.makeDirectory("items/other \xff");
        m_tree.makeDirectory("items/empty");
        m_mainWindow.resize(900, 700);
        m_mainWindow.show();
    }

    ~OpenPanelsTest() override { QLocale::setDefault(QLocale::c()); }

    std::string item(const std::string& name) const { return m_tree.path("items/" + name); }

    ScratchTree m_tree;
    QWidget m_mainWindow;
    OpenPanels m_panels{[this] { return &m_mainWindow; }};
};

TEST_F(OpenPanelsTest, FilesAndFoldersByTheirBytes) {
    const struct {
        const char* what;
        std::function<void(ItemPanel&)> steps;
        std::optional<std::string> chosen;
    } rows[] = {
        {"a file by Return", [](auto& panel) { clickName(panel, "file 10.txt"), realInput::key("Return"); },
         item("file 10.txt")},
        {"a folder",
         [](auto& panel) { clickName(panel, "folder"), realInput::click(*buttonOf(panel, "Choose")); },
         item("folder")},
        {"a folder of bytes",
         [](auto& panel) { clickName(panel, "other \xff"), realInput::click(*buttonOf(panel, "Choose")); },
         item("other \xff")},
        {"a hidden one",
         [](auto& panel) {
             EXPECT_TRUE(eventually([&] { return modelOf(panel).hasHidden(".secret"); }));
             realInput::key("Ctrl+H"), clickName(panel, ".secret"), realInput::key("Return");
         },
         item(".secret")},
        {"typed",
         [](auto& panel) {
             realInput::key("Ctrl+L"), realInput::type("folder"), realInput::key("Return");
             clickName(panel, "inside"), realInput::key("Return");
         },
         item("folder/inside")},
        {"nothing", [](auto&) { realInput::key("Escape"); }, std::nullopt},
        {"the user has left", [this](auto&) { m_panels.cancelOpen(); }, std::nullopt},
    };
    for (const auto& row : rows) {
        whenOpen<ItemPanel>(row.steps);
        EXPECT_EQ(m_panels.chooseItem(item("gone/deeper/still")), row.chosen) << row.what;
    }
}

TEST_F(OpenPanelsTest, SeveralFoldersToRestore) {
    whenOpen<ItemPanel>([](ItemPanel& panel) {
        clickName(panel, "empty");
        EXPECT_EQ(modelOf(panel).rowCount(), 3) << "no files";
        realInput::key("Shift+Down");
        realInput::click(*buttonOf(panel, "Restore"));
    });
    EXPECT_EQ(m_panels.chooseDirectoriesToRestore(item("")), (std::vector{item("empty"), item("folder")}));
    whenOpen<ItemPanel>([](ItemPanel& panel) { realInput::click(*buttonOf(panel, "Restore")); });
    EXPECT_EQ(m_panels.chooseDirectoriesToRestore(item("empty")), std::vector{item("empty")})
        << "the folder that is shown";
}

TEST_F(OpenPanelsTest, EveryNameOfAFolderIsThere) {
    const std::vector<std::string> names = hostileNames();
    for (const std::string& name : names)
        m_tree.makeFile("hostile/" + name);
    const auto contents = contentsOfFolder(m_tree.path("hostile"));
    ASSERT_TRUE(contents);
    FolderModel model([](const FolderEntry&) { return true; }, nullptr);
    const QAbstractItemModelTester tester(&model);
    model.setEntries(*contents);
    model.setHiddenShown(true);
    EXPECT_EQ(model.rowCount(), static_cast<int>(names.size()));
    for (const std::string& name : names)
        EXPECT_TRUE(model.rowOf(name)) << name;
}

TEST_F(OpenPanelsTest, AnApplicationByItsName) {
    const std::vector<InstalledApplication> applications{{"org.b", "Writer", "1", "writer"},
                                                         {"org.a", "drawing", "", ""},
                                                         {"org.c", "Text & Code", "", "/gone.png"}};
    const struct {
        const char* what;
        std::function<void(ApplicationPanel&)> steps;
        std::optional<QString> chosen;
    } rows[] = {
        {"the next one", [](auto&) { realInput::key("Down"), realInput::key("Return"); }, "org.c"},
        {"found", [](auto&) { realInput::type("WRI"), realInput::key("Return"); }, "org.b"},
        {"not found",
         [](auto&) { realInput::type("zzz"), realInput::key("Return"), realInput::key("Escape"); },
         std::nullopt},
        {"left", [this](auto&) { m_panels.cancelOpen(); }, std::nullopt},
    };
    for (const auto& row : rows) {
        whenOpen<ApplicationPanel>(row.steps);
        EXPECT_EQ(m_panels.chooseApplication(applications), row.chosen) << row.what;
    }
}

} // namespace
} // namespace veilkeep::test
