// Reads a workbook with one of npm's packages, and prints the first cell, how many cells it read, and
// the seconds of the processor that it took: node read_with_npm.js PACKAGE FILE
const fs = require("fs");
const [, , name, path] = process.argv;

// xlsx as it is called out of the box, and with all that Tessivo doesn't do switched off.
const readers = {
  "xlsx": (file) => readWithXLSX(file, {}),
  "xlsx, values only": (file) => readWithXLSX(file, {
    dense: true, cellFormula: false, cellHTML: false, cellText: false }),
  "exceljs": readWithExcelJS,
};

function readWithXLSX(file, options) {
  const book = require("xlsx").read(file, options);
  return () => {
    const sheet = book.Sheets[book.SheetNames[0]];
    const rows = sheet["!data"] || (Array.isArray(sheet) ? sheet : null);
    const read = rows ? rows.reduce((sum, row) => sum + Object.keys(row).length, 0)
                      : Object.keys(sheet).filter((key) => key[0] !== "!").length;
    return [(rows ? rows[0][0] : sheet.A1).v, read];
  };
}

async function readWithExcelJS(file) {
  const book = new (require("exceljs").Workbook)();
  await book.xlsx.load(file);
  return () => {
    let read = 0;
    book.worksheets[0].eachRow((row) => { read += row.actualCellCount; });
    return [book.worksheets[0].getCell("A1").value, read];
  };
}

async function main() {
  require(name.split(",")[0]);  // loading the package isn't reading the file
  const file = fs.readFileSync(path);
  const before = process.cpuUsage();
  const look = await readers[name](file);
  const used = process.cpuUsage(before);
  console.log(JSON.stringify([...look(), (used.user + used.system) / 1e6]));
}

main();
