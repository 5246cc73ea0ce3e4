// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QProcess>
#include <QtGlobal>

/// A terminal without a screen: what programs write to it can be read, and what is typed is read by them.
class PseudoTerminal
{
public:
    PseudoTerminal();
    ~PseudoTerminal();
    Q_DISABLE_COPY_MOVE(PseudoTerminal)

    /// Lets these streams (0 to 2) of a process that is still to be started be this terminal.
    void connect(QProcess &process, const QList<int> &streams) const;
    void type(const QByteArray &keys) const;
    /// What was written, when no process has it any more.
    [[nodiscard]] QByteArray written();

private:
    int m_ours = -1;
    int m_theirs = -1;
};
