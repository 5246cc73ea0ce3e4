// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDir>
#include <QFile>
#include <QLibrary>
#include <QTemporaryDir>

/// What ODBC knows of drivers and data sources, for the time of a test.
class OdbcSetup
{
public:
    /// Has this process know the driver of that file, by that name, and nothing else.
    OdbcSetup(const QString &name, const QString &file)
    {
        const QDir libraries(QStringLiteral("/usr/lib"));
        for (const QString &machine : libraries.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            const QString path = libraries.filePath(machine + QStringLiteral("/odbc/") + file);
            if (!QFile::exists(path))
                continue;
            write(QStringLiteral("odbcinst.ini"), QStringLiteral("[%1]\nDriver=%2\n").arg(name, path));
            m_hasDriver = true;
        }
        // Drivers load it for each connection; unloaded, it forgets what it keeps of these files without
        // freeing it.
        QLibrary installer(QStringLiteral("odbcinst"), 2);
        installer.setLoadHints(QLibrary::PreventUnloadHint);
        installer.load();
        qputenv("ODBCSYSINI", QFile::encodeName(m_folder.path()));
        qputenv("ODBCINI", QFile::encodeName(m_folder.filePath(QStringLiteral("odbc.ini"))));
    }

    [[nodiscard]] bool hasDriver() const { return m_hasDriver; }
    /// Of odbc.ini.
    void addSource(const QString &text) { write(QStringLiteral("odbc.ini"), text); }
    /// A file of a test, which goes with this.
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }

private:
    void write(const QString &name, const QString &text) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
            qFatal("%s cannot be written", qPrintable(file.fileName()));
    }

    QTemporaryDir m_folder;
    bool m_hasDriver = false;
};
