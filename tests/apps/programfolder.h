// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QProcess>
#include <QTemporaryDir>

#include <map>
#include <memory>

/// What a program has answered.
struct ProgramResult
{
    int code = -1;
    QByteArray out;
    QByteArray err;
};

/// A temporary folder in which programs are driven from outside, without display, desktop session and locale.
class ProgramFolder
{
public:
    static constexpr int patience = 120'000; ///< milliseconds until a program has to end

    static QString program();
    static QString sourceFile(const QString &name);
    static QString toolFile(const QString &name);
    static QString exampleFile(const QString &name);
    static QByteArray readExample(const QString &name);
    static QStringList exampleNames();
    /// Those with texts. Their items are as people type them: what follows from the rest is left out.
    static QStringList textExampleNames();

    /// Replaces the folder by an empty one.
    void renew();
    [[nodiscard]] QString path(const QString &name = {}) const { return m_folder->filePath(name); }
    void write(const QString &name, const QByteArray &content) const;
    [[nodiscard]] QByteArray read(const QString &name) const;
    [[nodiscard]] QStringList files(const QString &folder = {}) const;
    /// The contents of all files of a folder, by their names.
    [[nodiscard]] std::map<QString, QByteArray> contentsOf(const QString &folder) const;

    [[nodiscard]] std::unique_ptr<QProcess> start(const QString &command, const QStringList &arguments) const;
    [[nodiscard]] ProgramResult runCommand(const QString &command, const QStringList &arguments) const;
    /// Runs vxlabel.
    [[nodiscard]] ProgramResult run(const QStringList &arguments) const;
    /// Runs vxlabel, and compares what it answers.
    void expect(const QStringList &arguments, int code, const QByteArray &err = {}) const;
    /// Converts each label to the next, which must go without a word.
    void convert(const QStringList &labels) const;

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};

[[nodiscard]] bool isOneLine(const QByteArray &text);
