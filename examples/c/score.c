/* Scores three columns of people: score titanic.pmml */
#include <nbscore.h>
#include <stdio.h>
#include <string.h>

/* A column of texts, one behind the other; nothing here is freed. */
static void keep_schema(struct ArrowSchema* schema) {
    schema->release = NULL;
}

static void keep_array(struct ArrowArray* array) {
    array->release = NULL;
}

struct column {
    const void* buffers[3];
    struct ArrowSchema schema;
    struct ArrowArray array;
};

static void make_texts(struct column* column, const char* name, int64_t count, const int32_t* offsets,
                       const char* bytes) {
    memset(column, 0, sizeof *column);
    column->buffers[1] = offsets; /* the first one would mark absent values */
    column->buffers[2] = bytes;
    column->schema.format = "u";
    column->schema.name = name;
    column->schema.release = keep_schema;
    column->array.length = count;
    column->array.n_buffers = 3;
    column->array.buffers = column->buffers;
    column->array.release = keep_array;
}

static void show(const struct ArrowSchema* schema, const struct ArrowArray* scores) {
    const struct ArrowArray* predicted = scores->children[0];
    const struct ArrowArray* confidence = scores->children[1];
    const int32_t* ends = predicted->buffers[1];
    const char* bytes = predicted->buffers[2];
    printf("%s, %s\n", schema->children[0]->name, schema->children[1]->name);
    for (int64_t i = 0; i < scores->length; ++i)
        printf("%.*s, %.6f\n", (int)(ends[i + 1] - ends[i]), bytes + ends[i],
               ((const double*)confidence->buffers[1])[i]);
}

static int fail(nbscore_error* error) {
    fprintf(stderr, "%s: %s\n", error->file, error->message);
    nbscore_error_free(error);
    return 1;
}

int main(int argc, char** argv) {
    static const int32_t classes[] = {0, 5, 11, 16, 20};
    static const int32_t sexes[] = {0, 6, 10, 16, 20};
    static const int32_t ages[] = {0, 5, 10, 15, 20};
    struct column columns[3];
    struct ArrowSchema* schemas[] = {&columns[0].schema, &columns[1].schema, &columns[2].schema};
    struct ArrowArray* arrays[] = {&columns[0].array, &columns[1].array, &columns[2].array};
    const void* no_buffer = NULL;
    struct ArrowSchema schema = {0};
    struct ArrowArray people = {0};
    struct ArrowSchema score_schema;
    struct ArrowArray scores;
    nbscore_model* model;
    nbscore_error* error;

    if (argc != 2) {
        fprintf(stderr, "usage: score titanic.pmml\n");
        return 1;
    }
    if (nbscore_open_file(argv[1], NULL, &model, &error) != NBSCORE_OK) return fail(error);

    make_texts(&columns[0], "class", 4, classes, "firstsecondthirdcrew");
    make_texts(&columns[1], "sex", 4, sexes, "femalemalefemalemale");
    make_texts(&columns[2], "age", 4, ages, "adultadultchildadult");
    schema.format = "+s";
    schema.n_children = people.n_children = 3;
    schema.children = schemas;
    schema.release = keep_schema;
    people.length = 4;
    people.n_buffers = 1;
    people.buffers = &no_buffer;
    people.children = arrays;
    people.release = keep_array;

    if (nbscore_score_schema(model, NULL, &score_schema, &error) != NBSCORE_OK) return fail(error);
    if (nbscore_score(model, NULL, &schema, &people, &scores, &error) != NBSCORE_OK) return fail(error);
    show(&score_schema, &scores);
    scores.release(&scores);
    score_schema.release(&score_schema);
    nbscore_close(model);
    return 0;
}
