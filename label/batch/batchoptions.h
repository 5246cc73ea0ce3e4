// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/adjust/printadjustment.h"
#include "label/batch/rowselection.h"
#include "label/batch/shard.h"
#include "label/data/assetpaths.h"
#include "label/separation.h"
#include "label/sheet/sheetoptions.h"

#include <QByteArray>
#include <QDateTime>
#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

/// How a batch is printed.
struct BatchOptions
{
    enum class Format {
        Png,
        Pbm,
        Pdf, ///< labels in colour
        PdfPlates ///< a page for each plate
    };
    enum class OnError { Skip, Stop };
    /// What a check has to find on a label for its row to fail.
    enum class Check {
        None, ///< nothing is checked beyond what cannot be printed
        Errors,
        Warnings ///< or errors
    };
    enum class Start {
        New, ///< a batch of the same manifest must not be there
        Replace, ///< files and the manifest are replaced
        Resume, ///< what is printed already, and is what it was, stays
        OnlyFailed ///< likewise, and only rows that failed are printed
    };

    SeparationOptions separation;
    PrintAdjustment adjustment = {};
    Check check = Check::None;
    bool verify = false; ///< every barcode is read back from the plates, and a row that differs fails
    Format format = Format::Png;
    QString pattern; ///< of the names; see NamePattern
    QString pdf = {}; ///< the PDF that all labels go into, instead of files with names of the pattern
    std::optional<SheetOptions> sheet = {}; ///< that the labels of one PDF fill; if not, each has its page
    QString title = {}; ///< of PDFs
    QString manifest = {}; ///< its path, without the share; empty: see Batch::usualManifest()
    RowSelection rows = {};
    Shard shard = {};
    QString keyColumn = {}; ///< by which people know a row; empty: the first one
    QString copiesColumn = {}; ///< tells how often a row is printed; empty: once
    OnError onError = OnError::Skip;
    bool reprints = false; ///< what is printed already is printed again
    qint64 mostFileBytes = 0; ///< of a file of a row; 0 for any
    QStringList inputs = {}; ///< files that the batch reads; none of them is written
    Start start = Start::New;
    QByteArray labelDigest = {}; ///< of the file of the label: a batch is resumed with the same one only
    std::optional<int> rowSource = {}; ///< see BindingOptions
    AssetPaths assets = AssetPaths({});
    QHash<qint64, Problem> lostRows = {}; ///< that cannot be printed, by their numbers
    QDateTime begin = {}; ///< what dates and times on labels tell

    [[nodiscard]] bool hasPdfFormat() const { return format == Format::Pdf || format == Format::PdfPlates; }
};

/// How far a batch is.
struct BatchCount
{
    qint64 printed = 0; ///< rows
    qint64 kept = 0; ///< rows that were printed before
    qint64 failed = 0; ///< rows
    qint64 untried = 0; ///< rows that are not on record, where only those that failed are printed
    qint64 labels = 0; ///< printed, copies included
    std::optional<qint64> total = {}; ///< rows to come to, where that is known
    std::optional<qint64> about = {}; ///< the same where it is not, as the rows so far suggest

    /// Rows that nothing more becomes of.
    [[nodiscard]] qint64 done() const { return printed + kept + failed; }
};

/// Why a batch does not begin.
struct BatchRefusal
{
    enum Kind {
        Label, ///< it cannot be printed, or not with these columns
        Options, ///< the names, columns or state that were asked for
        Output ///< the folder or manifest cannot be written
    };

    Kind kind = Label;
    Problems problems;
};

/// What ended a batch.
enum class BatchEnd {
    Complete, ///< the rows did; some may have failed
    Stopped, ///< a row that failed
    DataFailed, ///< the rows cannot be read any further
    CannotWrite, ///< the disk, or the folder
    Interrupted
};
