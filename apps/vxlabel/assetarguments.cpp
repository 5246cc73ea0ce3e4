// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/assetarguments.h"

#include <QFile>
#include <QFileInfo>

#include <CLI/CLI.hpp>

void addAssetArguments(CLI::App &command, AssetArguments &arguments)
{
    command
        .add_option(
            "--search", arguments.search, "A folder of pictures that rows name, beside the label's own")
        ->type_name("DIR")
        ->allow_extra_args(false)
        ->check(CLI::ExistingDirectory);
    command.add_flag("--allow-any-path", arguments.allowAnyPath, "Let rows name pictures in any folder");
}

AssetPaths assetsOf(const AssetArguments &arguments, const QString &labelPath)
{
    QStringList folders { QFileInfo(labelPath).absolutePath() };
    for (const std::string &folder : arguments.search)
        folders.append(QFile::decodeName(folder.c_str()));
    return AssetPaths(folders, arguments.allowAnyPath);
}
