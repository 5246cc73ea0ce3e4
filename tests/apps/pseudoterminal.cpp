// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/pseudoterminal.h"

#include <QList>
#include <QTest>

#include <termios.h>

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

PseudoTerminal::PseudoTerminal()
    : m_ours(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
{
    QVERIFY(m_ours >= 0 && grantpt(m_ours) == 0 && unlockpt(m_ours) == 0);
    m_theirs = open(ptsname(m_ours), O_RDWR | O_NOCTTY | O_CLOEXEC);
    // Nothing is added to what programs write.
    termios settings;
    QCOMPARE(tcgetattr(m_theirs, &settings), 0);
    cfmakeraw(&settings);
    QCOMPARE(tcsetattr(m_theirs, TCSANOW, &settings), 0);
}

PseudoTerminal::~PseudoTerminal()
{
    close(m_ours);
    close(m_theirs);
}

void PseudoTerminal::connect(QProcess &process, const QList<int> &streams) const
{
    process.setChildProcessModifier([streams, terminal = m_theirs] {
        for (const int stream : streams)
            dup2(terminal, stream);
    });
}

void PseudoTerminal::type(const QByteArray &keys) const
{
    QCOMPARE(::write(m_ours, keys.constData(), size_t(keys.size())), ssize_t(keys.size()));
}

QByteArray PseudoTerminal::written()
{
    close(m_theirs);
    m_theirs = -1;
    QByteArray all;
    std::array<char, 4096> part;
    for (ssize_t size = 1; size > 0;) {
        size = ::read(m_ours, part.data(), part.size());
        all.append(part.data(), std::max<qsizetype>(size, 0));
    }
    return all;
}
