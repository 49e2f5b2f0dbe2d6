// npm xlsx: texts as formula results (its default), and as shared strings.
const XLSX = require("xlsx");
const cells = {
  A1: "Fête de l’été 🎭",
  A3: "Titre", C3: "Invités", D3: "Durée", E3: "Timecode", F3: "Jour", G3: "Heure", H3: "Total",
  AD3: "Trente",
  A4: "Été 🌞", C4: "Inès Caradec + Malik Ferrand", D4: "0:03:34", E4: "10:00:14:00",
  F4: { t: "n", v: 46194, z: "yyyy-mm-dd" }, G4: { t: "n", v: 0.75, z: "h:mm" },
  H4: { t: "n", v: 3, f: "1+2" }, AD4: "bout",
  A5: { t: "s", v: "Chanson <douce>", r: "<r><t xml:space=\"preserve\">Chanson </t></r>" +
        "<r><rPr><b/></rPr><t>&lt;douce&gt;</t></r>" },
  C5: "Chœur d'Arvel / Léa", D5: { t: "n", v: 225 },
  A6: "deux\nlignes", D6: "3 min", E6: "10:00",
  A7: "  ", C7: "personne",
};
const sheet = { "!ref": "A1:AD7", "!merges": [XLSX.utils.decode_range("A1:E1")] };
for (const [reference, value] of Object.entries(cells)) {
  sheet[reference] = typeof value === "string" ? { t: "s", v: value } : value;
}
const book = XLSX.utils.book_new();
XLSX.utils.book_append_sheet(book, sheet, "Soirée & bal");
XLSX.utils.book_append_sheet(book, XLSX.utils.aoa_to_sheet([["caché"]]), "Cachée");
book.Workbook = { Sheets: [{ Hidden: 0 }, { Hidden: 1 }] };
XLSX.writeFile(book, "sheetjs.xlsx", { compression: true });
XLSX.writeFile(book, "sheetjs-shared.xlsx", { bookSST: true, compression: true });
