// SPDX-License-Identifier: BSD-3-Clause
#include "platform/zint/symbologies.h"

#include <zint.h>

#include <algorithm>
#include <iterator>
#include <vector>

namespace Zint {

namespace {

using Kind = Symbology::Kind;

struct Entry
{
    int number;
    const char *name; ///< in UTF-8
    Kind kind;
};

constexpr Entry entries[] = {
    { BARCODE_CODE11, "Code 11", Kind::Linear },
    { BARCODE_C25STANDARD, "Standard 2 of 5", Kind::Linear },
    { BARCODE_C25INTER, "Interleaved 2 of 5", Kind::Linear },
    { BARCODE_C25IATA, "IATA 2 of 5", Kind::Linear },
    { BARCODE_C25LOGIC, "Data Logic 2 of 5", Kind::Linear },
    { BARCODE_C25IND, "Industrial 2 of 5", Kind::Linear },
    { BARCODE_CODE39, "Code 39", Kind::Linear },
    { BARCODE_EXCODE39, "Code 39 Extended", Kind::Linear },
    { BARCODE_EANX, "EAN", Kind::Linear },
    { BARCODE_EANX_CHK, "EAN with check digit", Kind::Linear },
    { BARCODE_GS1_128, "GS1-128", Kind::Linear },
    { BARCODE_CODABAR, "Codabar", Kind::Linear },
    { BARCODE_CODE128, "Code 128", Kind::Linear },
    { BARCODE_DPLEIT, "Deutsche Post Leitcode", Kind::Linear },
    { BARCODE_DPIDENT, "Deutsche Post Identcode", Kind::Linear },
    { BARCODE_CODE16K, "Code 16K", Kind::Stacked },
    { BARCODE_CODE49, "Code 49", Kind::Stacked },
    { BARCODE_CODE93, "Code 93", Kind::Linear },
    { BARCODE_FLAT, "Flattermarken", Kind::Linear },
    { BARCODE_DBAR_OMN, "GS1 DataBar Omnidirectional", Kind::Linear },
    { BARCODE_DBAR_LTD, "GS1 DataBar Limited", Kind::Linear },
    { BARCODE_DBAR_EXP, "GS1 DataBar Expanded", Kind::Linear },
    { BARCODE_TELEPEN, "Telepen Alpha", Kind::Linear },
    { BARCODE_UPCA, "UPC-A", Kind::Linear },
    { BARCODE_UPCA_CHK, "UPC-A with check digit", Kind::Linear },
    { BARCODE_UPCE, "UPC-E", Kind::Linear },
    { BARCODE_UPCE_CHK, "UPC-E with check digit", Kind::Linear },
    { BARCODE_POSTNET, "USPS POSTNET", Kind::Postal },
    { BARCODE_MSI_PLESSEY, "MSI Plessey", Kind::Linear },
    { BARCODE_FIM, "USPS Facing Identification Mark", Kind::Postal },
    { BARCODE_LOGMARS, "LOGMARS", Kind::Linear },
    { BARCODE_PHARMA, "Pharmacode One-Track", Kind::Linear },
    { BARCODE_PZN, "Pharmazentralnummer", Kind::Linear },
    { BARCODE_PHARMA_TWO, "Pharmacode Two-Track", Kind::Linear },
    { BARCODE_CEPNET, "CEPNet", Kind::Postal },
    { BARCODE_PDF417, "PDF417", Kind::Stacked },
    { BARCODE_PDF417COMP, "Compact PDF417", Kind::Stacked },
    { BARCODE_MAXICODE, "MaxiCode", Kind::Matrix },
    { BARCODE_QRCODE, "QR Code", Kind::Matrix },
    { BARCODE_CODE128B, "Code 128 subset B", Kind::Linear },
    { BARCODE_AUSPOST, "Australia Post Standard Customer", Kind::Postal },
    { BARCODE_AUSREPLY, "Australia Post Reply Paid", Kind::Postal },
    { BARCODE_AUSROUTE, "Australia Post Routing", Kind::Postal },
    { BARCODE_AUSREDIRECT, "Australia Post Redirection", Kind::Postal },
    { BARCODE_ISBNX, "ISBN", Kind::Linear },
    { BARCODE_RM4SCC, "Royal Mail 4-State Customer Code", Kind::Postal },
    { BARCODE_DATAMATRIX, "Data Matrix", Kind::Matrix },
    { BARCODE_EAN14, "EAN-14", Kind::Linear },
    { BARCODE_VIN, "Vehicle Identification Number", Kind::Linear },
    { BARCODE_CODABLOCKF, "Codablock F", Kind::Stacked },
    { BARCODE_NVE18, "NVE-18 (SSCC-18)", Kind::Linear },
    { BARCODE_JAPANPOST, "Japanese Postal Code", Kind::Postal },
    { BARCODE_KOREAPOST, "Korea Post", Kind::Postal },
    { BARCODE_DBAR_STK, "GS1 DataBar Stacked", Kind::Stacked },
    { BARCODE_DBAR_OMNSTK, "GS1 DataBar Stacked Omnidirectional", Kind::Stacked },
    { BARCODE_DBAR_EXPSTK, "GS1 DataBar Expanded Stacked", Kind::Stacked },
    { BARCODE_PLANET, "USPS PLANET", Kind::Postal },
    { BARCODE_MICROPDF417, "MicroPDF417", Kind::Stacked },
    { BARCODE_USPS_IMAIL, "USPS Intelligent Mail", Kind::Postal },
    { BARCODE_PLESSEY, "UK Plessey", Kind::Linear },
    { BARCODE_TELEPEN_NUM, "Telepen Numeric", Kind::Linear },
    { BARCODE_ITF14, "ITF-14", Kind::Linear },
    { BARCODE_KIX, "Dutch Post KIX", Kind::Postal },
    { BARCODE_AZTEC, "Aztec Code", Kind::Matrix },
    { BARCODE_DAFT, "DAFT Code", Kind::Postal },
    { BARCODE_DPD, "DPD Code", Kind::Linear },
    { BARCODE_MICROQR, "Micro QR Code", Kind::Matrix },
    { BARCODE_HIBC_128, "HIBC Code 128", Kind::Linear },
    { BARCODE_HIBC_39, "HIBC Code 39", Kind::Linear },
    { BARCODE_HIBC_DM, "HIBC Data Matrix", Kind::Matrix },
    { BARCODE_HIBC_QR, "HIBC QR Code", Kind::Matrix },
    { BARCODE_HIBC_PDF, "HIBC PDF417", Kind::Stacked },
    { BARCODE_HIBC_MICPDF, "HIBC MicroPDF417", Kind::Stacked },
    { BARCODE_HIBC_BLOCKF, "HIBC Codablock F", Kind::Stacked },
    { BARCODE_HIBC_AZTEC, "HIBC Aztec Code", Kind::Matrix },
    { BARCODE_DOTCODE, "DotCode", Kind::Matrix },
    { BARCODE_HANXIN, "Han Xin Code", Kind::Matrix },
    { BARCODE_MAILMARK, "Royal Mail 4-State Mailmark", Kind::Postal },
    { BARCODE_AZRUNE, "Aztec Runes", Kind::Matrix },
    { BARCODE_CODE32, "Code 32", Kind::Linear },
    { BARCODE_EANX_CC, "EAN Composite", Kind::Composite },
    { BARCODE_GS1_128_CC, "GS1-128 Composite", Kind::Composite },
    { BARCODE_DBAR_OMN_CC, "GS1 DataBar Omnidirectional Composite", Kind::Composite },
    { BARCODE_DBAR_LTD_CC, "GS1 DataBar Limited Composite", Kind::Composite },
    { BARCODE_DBAR_EXP_CC, "GS1 DataBar Expanded Composite", Kind::Composite },
    { BARCODE_UPCA_CC, "UPC-A Composite", Kind::Composite },
    { BARCODE_UPCE_CC, "UPC-E Composite", Kind::Composite },
    { BARCODE_DBAR_STK_CC, "GS1 DataBar Stacked Composite", Kind::Composite },
    { BARCODE_DBAR_OMNSTK_CC, "GS1 DataBar Stacked Omnidirectional Composite", Kind::Composite },
    { BARCODE_DBAR_EXPSTK_CC, "GS1 DataBar Expanded Stacked Composite", Kind::Composite },
    { BARCODE_CHANNEL, "Channel Code", Kind::Linear },
    { BARCODE_CODEONE, "Code One", Kind::Matrix },
    { BARCODE_GRIDMATRIX, "Grid Matrix", Kind::Matrix },
    { BARCODE_UPNQR, "UPNQR", Kind::Matrix },
    { BARCODE_ULTRA, "Ultracode", Kind::Matrix },
    { BARCODE_RMQR, "Rectangular Micro QR Code", Kind::Matrix },
    { BARCODE_BC412, "BC412", Kind::Linear },
};

Symbology symbologyOfEntry(const Entry &entry)
{
    const auto can = [&entry](unsigned int flag) { return ZBarcode_Cap(entry.number, flag) != 0; };
    return { entry.number, QString::fromUtf8(entry.name), entry.kind, can(ZINT_CAP_GS1), can(ZINT_CAP_HRT),
        can(ZINT_CAP_ECI) };
}

} // namespace

std::span<const Symbology> symbologies()
{
    static const std::vector<Symbology> all = [] {
        std::vector<Symbology> made;
        std::ranges::transform(entries, std::back_inserter(made), symbologyOfEntry);
        return made;
    }();
    return all;
}

const Symbology *symbologyOf(int number)
{
    const std::span<const Symbology> all = symbologies();
    const auto found = std::ranges::lower_bound(all, number, {}, &Symbology::number);
    return found != all.end() && found->number == number ? &*found : nullptr;
}

} // namespace Zint
