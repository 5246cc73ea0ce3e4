#!/usr/bin/env python3
# SPDX-License-Identifier: BSD-3-Clause
"""Writes the example labels into the folder of the examples, or into another one that is given."""
import pathlib
import sys

import address_label
import asset_tag
import bin_label
import calibration_sheet
import hazard_sign
import price_sign
import product_label
import shelf_batch
import shelf_label
import shipping_label
import spare_parts_label
import spine_label
import warning_sign
import wayfinding_sign

SIGNS = {
    "address-label": address_label,
    "asset-tag": asset_tag,
    "bin-label": bin_label,
    "calibration-sheet": calibration_sheet,
    "hazard-sign": hazard_sign,
    "price-sign": price_sign,
    "product-label": product_label,
    "shelf-label": shelf_label,
    "shipping-label": shipping_label,
    "spare-parts-label": spare_parts_label,
    "spine-label": spine_label,
    "warning-sign": warning_sign,
    "wayfinding-sign": wayfinding_sign,
}


def main():
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).resolve().parent.parent
    for name, sign in SIGNS.items():
        (folder / f"{name}.vxl").write_text(sign.build().to_json(), encoding="utf-8")
    batch = folder / "batch"
    batch.mkdir(exist_ok=True)
    shelf_batch.write_label(batch / "shelf.vxl")
    shelf_batch.write_database(batch / "shelf.sqlite")


if __name__ == "__main__":
    main()
