#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace veilkeep {

// One failed item of a batch, as the table of errors shows it.
struct ErrorEntry {
    QString fileName;
    QString errorCode; // the error's text, no number

    bool operator==(const ErrorEntry&) const = default;
};

// One question or message to the user, whoever shows it. The first button is the default one.
struct Alert {
    // The first three are numbered as alert objects number them.
    enum class Style { Warning = 0, Informational = 1, Critical = 2, Plain = 3 };
    enum class Window { None, Main }; // what it is attached to; None: the whole application waits for it
    struct Button {
        QString title;
        int code = 0; // what the alert answers
    };

    Style style = Style::Plain;
    Window window = Window::None;
    QString title;
    QString message; // shown as it is, never a template
    std::vector<Button> buttons;
    bool offersSuppression = false; // a check box "do not ask again"
    std::vector<ErrorEntry> errors; // shown as a table, where there are any
    QStringList applications;       // shown as a list, where there are any

    // Who shows the alert calls this first, on the thread that shows it. False: nobody is there any more;
    // nothing is shown, and the cancelling code is the answer.
    std::function<bool()> beginShowing = [] { return true; };

    // The answer of a user who is not there or closes the alert. The last button's where none is said.
    std::optional<int> cancellingCode;
    int codeWhenCancelled() const { return cancellingCode.value_or(buttons.back().code); }
};

struct AlertAnswer {
    int code = 0;
    bool suppress = false;    // the check box was on
    bool nobodyThere = false; // not the user's answer
};

} // namespace veilkeep
