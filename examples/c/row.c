/* Scores one person of the Titanic, and again as another sex: row titanic.pmml */
#include <nbscore.h>
#include <stdio.h>

int main(int argc, char** argv) {
    nbscore_model* model;
    nbscore_row* row;
    nbscore_answer answer;
    size_t class_field, sex_field;

    if (argc != 2 || nbscore_open_file(argv[1], NULL, &model, NULL) != NBSCORE_OK) return 1;
    nbscore_row_make(model, &row, NULL);
    nbscore_find_field(model, "class", &class_field, NULL);
    nbscore_find_field(model, "sex", &sex_field, NULL);

    nbscore_row_set_text(row, class_field, "first", 5, NULL);
    nbscore_row_set_text(row, sex_field, "female", 6, NULL);
    nbscore_row_score(row, &answer, NULL); /* the age is missing */
    printf("%s, %f\n", nbscore_answer_name(model, (size_t)answer.predicted), answer.confidence);

    nbscore_row_set_text(row, sex_field, "male", 4, NULL);
    nbscore_row_score(row, &answer, NULL);
    printf("%s, %f\n", nbscore_answer_name(model, (size_t)answer.predicted), answer.confidence);

    nbscore_row_free(row);
    nbscore_close(model);
    return 0;
}
