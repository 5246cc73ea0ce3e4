// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtGlobal>

#include <CLI/App.hpp>

#include <string>

/// The heading of the help below which the options stand that are added to a command while this lives.
class OptionGroup
{
public:
    OptionGroup(CLI::App &command, const std::string &heading)
        : m_command(command)
        , m_before(command.option_defaults()->get_group())
    {
        command.option_defaults()->group(heading);
    }
    // NOLINTNEXTLINE(bugprone-exception-escape): without memory for a heading, the program ends anyway
    ~OptionGroup() { m_command.option_defaults()->group(m_before); }
    Q_DISABLE_COPY_MOVE(OptionGroup)

private:
    CLI::App &m_command;
    std::string m_before;
};
