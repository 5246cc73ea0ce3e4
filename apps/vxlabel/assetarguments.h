// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/assetpaths.h"

#include <string>
#include <vector>

namespace CLI {
class App;
}

/// Where the files may lie that rows name.
struct AssetArguments
{
    std::vector<std::string> search; ///< folders beside the label's own
    bool allowAnyPath = false;
};

/// Adds the arguments.
void addAssetArguments(CLI::App &command, AssetArguments &arguments);

/// In the folder of the label, and in those that the arguments tell.
[[nodiscard]] AssetPaths assetsOf(const AssetArguments &arguments, const QString &labelPath);
