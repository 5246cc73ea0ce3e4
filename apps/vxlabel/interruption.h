// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArrayView>
#include <QtGlobal>

/// SIGINT and SIGTERM end the program at once with ExitCode::Interrupted, except while files are being
/// written.
namespace Interruption {

void install();

/// Postpones the end of an interrupted program to the end of its own life, so that files are whole and no
/// temporary stays behind.
class Postponed
{
public:
    Postponed();
    ~Postponed();
    Q_DISABLE_COPY_MOVE(Postponed)
};

/// Whether the end was postponed, and something that takes long should come to it.
[[nodiscard]] bool isPending();

/// What an interrupted process says, with its line feed.
inline constexpr QByteArrayView line = "vxlabel: interrupted\n";

/// Says so on standard error; signal handlers may call it.
void tell();

} // namespace Interruption
