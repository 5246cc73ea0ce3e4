// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <CLI/App.hpp>
#include <CLI/FormatterFwd.hpp>

#include <string>

/// Writes the help on the program or on one of its commands in lines of 80 columns: what it is for, how it is
/// called, its arguments, its options below the headings of their groups, and the footer. The help on
/// everything is in the form in which help2man makes a manual page of it, with a section for each command.
class HelpFormatter : public CLI::FormatterBase
{
public:
    [[nodiscard]] std::string make_help(
        const CLI::App *command, std::string name, CLI::AppFormatMode mode) const override;
};
