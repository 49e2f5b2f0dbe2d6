/* libxlsxwriter: shared strings; and its mode of constant memory, which stores texts in the cells. */
#include <xlsxwriter.h>

static const struct {
    const char *reference, *text;
} texts[] = {
    {"A1", "Fête de l’été 🎭"}, {"A3", "Titre"}, {"C3", "Invités"}, {"D3", "Durée"},
    {"E3", "Timecode"}, {"F3", "Jour"}, {"G3", "Heure"}, {"H3", "Total"}, {"AD3", "Trente"},
    {"A4", "Été 🌞"}, {"C4", "Inès Caradec + Malik Ferrand"}, {"D4", "0:03:34"},
    {"E4", "10:00:14:00"}, {"F4", NULL}, {"G4", NULL}, {"H4", NULL}, {"AD4", "bout"},
    {"A5", NULL}, {"C5", "Chœur d'Arvel / Léa"}, {"D5", NULL}, {"A6", "deux\nlignes"},
    {"D6", "3 min"}, {"E6", "10:00"}, {"A7", "  "}, {"C7", "personne"}};

/* In constant memory, cells must come row by row, so the few that aren't plain texts are in the
   table too. */
static void write(const char* file, int constant_memory) {
    lxw_workbook_options options = {.constant_memory = (uint8_t)constant_memory};
    lxw_workbook* book = workbook_new_opt(file, &options);
    lxw_worksheet* sheet = workbook_add_worksheet(book, "Soirée & bal");
    lxw_format *bold = workbook_add_format(book), *day = workbook_add_format(book);
    lxw_format* hour = workbook_add_format(book);
    format_set_bold(bold);
    format_set_num_format(day, "yyyy-mm-dd");
    format_set_num_format(hour, "h:mm");
    lxw_rich_string_tuple plain = {NULL, "Chanson "}, strong = {bold, "<douce>"};
    lxw_rich_string_tuple* rich[] = {&plain, &strong, NULL};
    lxw_datetime date = {2026, 6, 21, 0, 0, 0}, time = {0, 0, 0, 18, 0, 0};
    if (!constant_memory) worksheet_merge_range(sheet, RANGE("A1:E1"), "", NULL);
    for (size_t i = 0; i < sizeof texts / sizeof *texts; ++i) {
        const char* at = texts[i].reference;
        lxw_row_t row = lxw_name_to_row(at);
        lxw_col_t column = lxw_name_to_col(at);
        if (texts[i].text) worksheet_write_string(sheet, row, column, texts[i].text, NULL);
        else if (*at == 'F') worksheet_write_datetime(sheet, row, column, &date, day);
        else if (*at == 'G') worksheet_write_datetime(sheet, row, column, &time, hour);
        else if (*at == 'H') worksheet_write_formula_num(sheet, row, column, "=1+2", NULL, 3);
        else if (*at == 'A') worksheet_write_rich_string(sheet, row, column, rich, NULL);
        else worksheet_write_number(sheet, row, column, 225, NULL);
    }
    lxw_worksheet* hidden = workbook_add_worksheet(book, "Cachée");
    worksheet_write_string(hidden, 0, 0, "caché", NULL);
    worksheet_hide(hidden);
    workbook_close(book);
}

int main(void) {
    write("libxlsxwriter.xlsx", 0);
    write("libxlsxwriter-constant.xlsx", 1);
    return 0;
}
