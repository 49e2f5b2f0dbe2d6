#!/bin/sh
# Writes every workbook of this folder again, in the folder it is called in:
#   mkdir scratch && cd scratch && npm install xlsx@0.18.5 exceljs@4.4.0 && …/write-all.sh
# See README.md for the writers; only needed to add one or to take a newer version.
set -eu
here=$(dirname "$(realpath "$0")")
export TZ=UTC NODE_PATH="$PWD/node_modules"

node "$here/sheetjs.js"
node "$here/exceljs.js"
python3 "$here/write_openpyxl.py"
cc -o libxlsxwriter "$here/libxlsxwriter.c" -lxlsxwriter
./libxlsxwriter
ssconvert exceljs.xlsx gnumeric.xlsx
mkdir -p converted
soffice --headless --convert-to xlsx --outdir converted exceljs.xlsx
mv converted/exceljs.xlsx libreoffice.xlsx

rm -rf members && mkdir members
(cd members && unzip -q ../libreoffice.xlsx)
rm -f zip-comment.xlsx 7z.xlsx
(cd members && zip -qr ../zip-comment.xlsx . && echo "conducteur du 21 juin" | zip -qz ../zip-comment.xlsx)
(cd members && 7z a -tzip -bso0 ../7z.xlsx .)
python3 "$here/repack.py"
