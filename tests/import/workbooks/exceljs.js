// npm exceljs: shared and rich strings; and its streaming writer, which stores texts in the cells.
const ExcelJS = require("exceljs");
const cells = {
  A1: "Fête de l’été 🎭",
  A3: "Titre", C3: "Invités", D3: "Durée", E3: "Timecode", F3: "Jour", G3: "Heure", H3: "Total",
  AD3: "Trente",
  A4: "Été 🌞", C4: "Inès Caradec + Malik Ferrand", D4: "0:03:34", E4: "10:00:14:00",
  F4: new Date(Date.UTC(2026, 5, 21)), G4: new Date(Date.UTC(1899, 11, 30, 18)),
  H4: { formula: "1+2", result: 3 }, AD4: "bout",
  A5: { richText: [{ text: "Chanson " }, { font: { bold: true }, text: "<douce>" }] },
  C5: "Chœur d'Arvel / Léa", D5: 225,
  A6: "deux\nlignes", D6: "3 min", E6: "10:00",
  A7: "  ", C7: "personne",
};
function fill(book) {
  const sheet = book.addWorksheet("Soirée & bal");
  for (const [reference, value] of Object.entries(cells)) {
    sheet.getCell(reference).value = value;
  }
  sheet.getCell("G4").numFmt = "h:mm";
  sheet.mergeCells("A1:E1");
  const hidden = book.addWorksheet("Cachée", { state: "hidden" });
  hidden.getCell("A1").value = "caché";
}
async function main() {
  const book = new ExcelJS.Workbook();
  fill(book);
  await book.xlsx.writeFile("exceljs.xlsx");
  const stream = new ExcelJS.stream.xlsx.WorkbookWriter({
    filename: "exceljs-stream.xlsx", useSharedStrings: false, useStyles: true });
  fill(stream);
  await stream.commit();
}
main();
