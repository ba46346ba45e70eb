#include "app/ask/Asker.h"

#include "tests/support/ScratchTree.h"
#include "tests/support/ScriptedPresenter.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cerrno>
#include <functional>

namespace veilkeep {
namespace {

using Kind = AskRequest::Kind;

QString titleOf(const AskRequest& request) {
    switch (request.kind) {
    case Kind::Overwrite:
        return "Some items cannot be unhidden.";
    case Kind::Recents:
        return "Recent files list removal.";
    case Kind::RecentsApplications:
        return "The item you want to hide is in the ‘Open Recent’ list.";
    case Kind::GenericError:
        return QString::fromStdString(request.fields[0]);
    }
    return {};
}

class FakeTrash : public Trash {
public:
    Result<void> moveToTrash(const std::string& path) override {
        trashed.push_back(path);
        return error == 0 ? Result<void>() : Error::system("trash", path, error);
    }
    std::vector<std::string> trashed;
    int error = 0;
};

class AskerTest : public ::testing::Test {
protected:
    AskRequest overwriteRequest() {
        const std::string path = m_tree.makeFile("d/a\n\xff.txt");
        struct stat status = {};
        EXPECT_EQ(::lstat(path.c_str(), &status), 0);
        return {Kind::Overwrite,
                {path, "a 2.txt", std::to_string(status.st_dev), std::to_string(status.st_ino)}};
    }

    QString answerTo(const AskRequest& request) {
        return Asker(m_alerts, m_trash).answerTo(request).value_or("-");
    }

    test::ScratchTree m_tree;
    test::ScriptedPresenter m_presenter;
    UserDefaults m_defaults;
    Alerts m_alerts{m_presenter, m_defaults};
    FakeTrash m_trash;
};

TEST_F(AskerTest, AnswersInTheWordsThatTheWorkerKnows) {
    struct Row {
        AskRequest request;
        QString button, message, word;
    };
    const Row rows[] = {
        {{Kind::Recents, {}}, "Remove Recents", {}, "Yes"},
        {{Kind::Recents, {}}, "Don't Remove Recents", {}, "No"},
        {{Kind::RecentsApplications, {"/d/<b>a\n", "VLC", "LibreOffice"}},
         "Continue",
         "“<b>a\\n”",
         "Continue"},
        {{Kind::RecentsApplications, {"/d/a", "VLC"}}, "Cancel", "“a”", "Cancel"},
        {{Kind::GenericError, {"title", "text"}}, "OK", "text", "OK"},
        {overwriteRequest(), "Rename",
         "“a\\n\\xff.txt” you want to unhide already exists. Do you want to replace or rename it to “a "
         "2.txt”?",
         "Rename"},
        {overwriteRequest(), "Cancel", {}, "Cancel"},
    };
    for (const Row& row : rows) {
        m_presenter.expect({.title = titleOf(row.request), .answer = row.button});
        EXPECT_EQ(answerTo(row.request), row.word);
        EXPECT_TRUE(m_presenter.shown().back().message.contains(row.message))
            << m_presenter.shown().back().message.toStdString();
    }
    EXPECT_EQ(m_presenter.shown()[2].applications, (QStringList{"VLC", "LibreOffice"}));
    EXPECT_TRUE(m_trash.trashed.empty());
}

TEST_F(AskerTest, ReplacesOnlyWhatLiesInTheTrashByThen) {
    struct Row {
        std::string name;
        std::function<void(AskRequest&)> before;
        int trashError = 0;
        bool isTried = true;
        QString told; // null where it went well
    };
    const auto nothing = [](AskRequest&) {};
    const Row rows[] = {
        {"well", nothing, 0, true, {}},
        {"no trash", nothing, ENOTSUP, true, "no trash"},
        {"no rights", nothing, EACCES, true, "could not be moved to the trash"},
        {"another item", [](AskRequest& request) { request.fields[3] += "1"; }, 0, false,
         "another one took its place"},
        {"another volume", [](AskRequest& request) { request.fields[2] += "1"; }, 0, false,
         "another one took its place"},
        {"gone", [](AskRequest& request) { ::unlink(request.fields[0].c_str()); }, 0, false,
         "could not be moved"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        AskRequest request = overwriteRequest();
        row.before(request);
        m_trash.trashed.clear();
        m_trash.error = row.trashError;
        m_presenter.expect({.title = "Some items cannot be unhidden.", .answer = "Replace"});
        if (!row.told.isNull())
            m_presenter.expect({.title = "Some items cannot be unhidden.", .answer = "OK"});
        EXPECT_EQ(answerTo(request), row.told.isNull() ? "Replace" : "-");
        EXPECT_EQ(m_trash.trashed.size(), row.isTried ? 1U : 0U);
        EXPECT_TRUE(row.told.isNull() || m_presenter.shown().back().message.contains(row.told));
    }
    AskRequest rubbish = overwriteRequest();
    rubbish.fields[3] = "12x";
    EXPECT_EQ(answerTo(rubbish), "-");
}

// Even an answer that came as the one who asked went is none.
TEST_F(AskerTest, DecidesNothingWhereNobodyIsThere) {
    for (const AskRequest& request :
         {AskRequest{Kind::Recents, {}}, AskRequest{Kind::RecentsApplications, {"/a", "b"}},
          overwriteRequest(), AskRequest{Kind::GenericError, {"a", "b"}}}) {
        m_alerts.setNobodyThere(false);
        m_presenter.expect({.title = titleOf(request), .whileOpen = [&] { m_alerts.setNobodyThere(true); }});
        EXPECT_EQ(answerTo(request), "-");
    }
    EXPECT_TRUE(m_trash.trashed.empty());
}

} // namespace
} // namespace veilkeep
