// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QJsonObject>
#include <QString>

#include <optional>

namespace CLI {
class App;
class Option;
} // namespace CLI

/// Shows on standard error how far the program is with the rows of a table.
class Progress
{
public:
    enum class Form {
        None,
        Line, ///< one line that changes, for people
        Json ///< an object on a line twice a second, for programs
    };

    /// How far it is.
    struct State
    {
        qint64 done = 0; ///< rows
        qint64 worked = 0; ///< of these, the rows that have taken time
        std::optional<qint64> total = {}; ///< rows to come to, where that is known
        std::optional<qint64> about = {}; ///< the same where it is not
        QString faults = {}; ///< "3 failed"; empty for none
        QJsonObject counts = {}; ///< of any kind, for programs
    };

    /// A line where standard error is a terminal, and otherwise nothing.
    [[nodiscard]] static Form usualForm();
    /// Adds "--progress".
    static CLI::Option *addOption(
        CLI::App &command, const std::string &what, std::optional<Progress::Form> &form);

    explicit Progress(Form form);

    /// Whether the last state was shown long ago.
    [[nodiscard]] bool isDue() const;
    void show(const State &state);
    /// Shows the last state, which stays.
    void finish(const State &state);
    /// Makes room for other words.
    void clearLine();
    /// An object for programs, on a line of its own.
    static void write(const QJsonObject &object);

private:
    [[nodiscard]] double rateOf(const State &state) const;
    [[nodiscard]] QByteArray line(const State &state) const;
    [[nodiscard]] QJsonObject json(const State &state) const;

    Form m_form;
    QElapsedTimer m_sinceBegin;
    QElapsedTimer m_sinceShown;
    bool m_lineIsShown = false;
};
