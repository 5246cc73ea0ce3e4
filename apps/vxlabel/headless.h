// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QApplication>

#include <memory>

/// Prepares the process to run without display, desktop session or terminal. To be called first of all.
void prepareHeadless();

/// Qt's application, which items need to be painted; it shows nothing. The arguments must outlive it.
[[nodiscard]] std::unique_ptr<QApplication> createHeadlessApplication(int &argc, char **argv);
