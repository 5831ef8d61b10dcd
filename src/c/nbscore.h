/* The C interface of nbscore: scores cases with Naive Bayes models written in PMML.
 *
 * A program includes this header and links one library, libnbscore. It holds all that scoring needs, and finds beside
 * itself what reads unusual documents.
 *
 * Handles. An nbscore_model never changes once it is open: any number of threads may use one at once. nbscore_close
 * ends it; no thread may then be inside a call with it. A stream of scores keeps what it needs of the model.
 *
 * Failure. A call that can fail returns NBSCORE_OK or the kind of the error. Nothing is thrown across this border, a
 * call that fails leaves nothing behind, and what it would have made is null or released. Where `error` is not null,
 * *error becomes null, or the error, which the caller frees with nbscore_error_free.
 *
 * Texts are UTF-8 and end in a zero.
 *
 * Options. A struct of options begins with its own size, which tells a newer library how much of it an older program
 * knows: start from the struct's NBSCORE_..._INIT. A null pointer stands for that too.
 */
#ifndef NBSCORE_H
#define NBSCORE_H

#include <stddef.h>
#include <stdint.h>

/* Grows when something that a program may rely on changes; what is only added does not change it. */
#define NBSCORE_ABI 1

#if defined(_WIN32) && defined(NBSCORE_BUILDING)
#define NBSCORE_CALL __declspec(dllexport)
#elif defined(_WIN32)
#define NBSCORE_CALL __declspec(dllimport)
#elif defined(__GNUC__)
#define NBSCORE_CALL __attribute__((visibility("default")))
#else
#define NBSCORE_CALL
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- The Arrow C data and stream interfaces, as their page defines them ---------------------------------------- */

#ifndef ARROW_C_DATA_INTERFACE
#define ARROW_C_DATA_INTERFACE

#define ARROW_FLAG_DICTIONARY_ORDERED 1
#define ARROW_FLAG_NULLABLE 2
#define ARROW_FLAG_MAP_KEYS_SORTED 4

struct ArrowSchema {
    const char* format;
    const char* name;
    const char* metadata;
    int64_t flags;
    int64_t n_children;
    struct ArrowSchema** children;
    struct ArrowSchema* dictionary;
    void (*release)(struct ArrowSchema*);
    void* private_data;
};

struct ArrowArray {
    int64_t length;
    int64_t null_count;
    int64_t offset;
    int64_t n_buffers;
    int64_t n_children;
    const void** buffers;
    struct ArrowArray** children;
    struct ArrowArray* dictionary;
    void (*release)(struct ArrowArray*);
    void* private_data;
};

#endif /* ARROW_C_DATA_INTERFACE */

#ifndef ARROW_C_STREAM_INTERFACE
#define ARROW_C_STREAM_INTERFACE

struct ArrowArrayStream {
    int (*get_schema)(struct ArrowArrayStream*, struct ArrowSchema* out);
    int (*get_next)(struct ArrowArrayStream*, struct ArrowArray* out);
    const char* (*get_last_error)(struct ArrowArrayStream*);
    void (*release)(struct ArrowArrayStream*);
    void* private_data;
};

#endif /* ARROW_C_STREAM_INTERFACE */

/* ---- The library ------------------------------------------------------------------------------------------------ */

/* NBSCORE_ABI of the library that is running. A program can use it where this is its own. Any thread. */
NBSCORE_CALL uint32_t nbscore_abi(void);
/* The library's version, such as "0.1.0". Never freed. Any thread. */
NBSCORE_CALL const char* nbscore_version(void);

/* ---- Errors ----------------------------------------------------------------------------------------------------- */

/* What a call returns, and the kind of an error. */
enum {
    NBSCORE_OK = 0,
    /* The document cannot be scored: `code` and the place say why and where. */
    NBSCORE_REFUSED = 1,
    /* The cases do not fit the model: a column is missing, or holds what its field cannot. */
    NBSCORE_BAD_CASES = 2,
    /* A file or a stream cannot be read. */
    NBSCORE_UNREADABLE = 3,
    /* An argument is null that may not be, or an option has a value that it does not know. */
    NBSCORE_BAD_ARGUMENT = 4,
    NBSCORE_OUT_OF_MEMORY = 5,
    /* `is_cancelled` answered that the work is no longer wanted. */
    NBSCORE_CANCELLED = 6,
    /* Something else; a fault of the library or of the system. */
    NBSCORE_FAILED = 7
};

typedef struct nbscore_error {
    int32_t kind;
    /* Of a refused document the number of the refusal, from 1 on (docs/documents.md); else 0. */
    int32_t code;
    /* Where in the document the fault stands, from 1; 0 where that is not known. */
    uint64_t line;
    uint64_t column;
    /* None of these is null; what is not known is empty. */
    const char* message;
    /* What to do about it. */
    const char* advice;
    /* The document, as the caller named it. */
    const char* file;
    /* The element at fault, such as "/PMML/NaiveBayesModel[1]/BayesInputs[1]". */
    const char* path;
} nbscore_error;

/* Frees an error; null is none. Any thread. */
NBSCORE_CALL void nbscore_error_free(nbscore_error* error);

/* ---- Documents and models --------------------------------------------------------------------------------------- */

enum {
    /* The engine's own rule, the command's --rule smoothed. */
    NBSCORE_RULE_SMOOTHED = 0,
    /* The rule of the PMML standard, --rule standard. */
    NBSCORE_RULE_STANDARD = 1
};

/* How a document is read. */
typedef struct nbscore_reading {
    /* sizeof(nbscore_reading) */
    size_t size;
    int32_t rule;
    /* 1: rewrite what newer producers write into what is read here, as the command's --adapt does; 0: do not. */
    int32_t adapt;
    /* By the standard's rule, 1: raise only densities that are exactly 0, the command's --densities plain; 0: raise
     * those below the threshold. */
    int32_t plain_densities;
    int32_t reserved;
    /* Bytes of memory that one document may take while it is read; 0: half of what the process may have. */
    uint64_t max_memory;
    /* Bytes that a document may have; 0: any number. */
    uint64_t max_document_bytes;
    /* Asked every few milliseconds while a document is read, and while cases are scored at least once for each array,
     * by every thread that works, perhaps by several at once: other than 0 ends the work. Null: never. It stays with
     * the model, may not throw, and may not call this library. */
    int (*is_cancelled)(void* cancel_data);
    void* cancel_data;
} nbscore_reading;

#define NBSCORE_READING_INIT \
    { sizeof(nbscore_reading), NBSCORE_RULE_SMOOTHED, 0, 0, 0, 0, 0, NULL, NULL }

typedef struct nbscore_model nbscore_model;

/* Reads the model of a document. One that cannot score every case is refused.
 * path, name: of the file; what errors call bytes in memory.
 * bytes: borrowed for the call; null only with size 0.
 * reading: may be null.
 * model: gets the model, which the caller ends with nbscore_close; null when the call fails.
 * Any thread. */
NBSCORE_CALL int32_t nbscore_open_file(const char* path, const nbscore_reading* reading, nbscore_model** model,
                                       nbscore_error** error);
NBSCORE_CALL int32_t nbscore_open_memory(const void* bytes, size_t size, const char* name,
                                         const nbscore_reading* reading, nbscore_model** model, nbscore_error** error);
/* Frees a model; null is none. On one thread, and on none while another is inside a call with the model. */
NBSCORE_CALL void nbscore_close(nbscore_model* model);

/* What the model holds, as JSON, in the form of `nbscore check --format json`. Its problems are remarks on the model
 * alone, and of the other rule it says nothing: nbscore_check_file tells all.
 * json: gets the text, which the caller frees with nbscore_text_free; null when the call fails.
 * Any number of threads at once. */
NBSCORE_CALL int32_t nbscore_describe(const nbscore_model* model, char** json, nbscore_error** error);

/* What a document holds and all that is wrong with it, as JSON: what `nbscore check --format json` writes. A document
 * that is refused is no error here: the JSON says so. The arguments are those of the calls above. Any thread. */
NBSCORE_CALL int32_t nbscore_check_file(const char* path, const nbscore_reading* reading, char** json,
                                        nbscore_error** error);
NBSCORE_CALL int32_t nbscore_check_memory(const void* bytes, size_t size, const char* name,
                                          const nbscore_reading* reading, char** json, nbscore_error** error);

/* Frees a text that a call gave; null is none. Any thread. */
NBSCORE_CALL void nbscore_text_free(char* text);

/* ---- Columns of cases ------------------------------------------------------------------------------------------- */

/* How cases are scored. */
typedef struct nbscore_scoring {
    /* sizeof(nbscore_scoring) */
    size_t size;
    /* 0: by the standard's rule, the columns that the document's Output asks for, where it does; 1: the usual ones, as
     * the command's --columns usual. */
    int32_t usual_columns;
    /* 1: the prediction alone, as --prediction-only. */
    int32_t prediction_only;
    /* 1: a column that the model needs and the cases lack is absent in every case, as --allow-missing-fields; 0: it is
     * an error. */
    int32_t lacking_as_absent;
    int32_t reserved;
    /* Of a set of sub-models, only so many of each case's highest scores, as --best; 0: all. */
    uint64_t best;
    /* Of a single classifier, up to 1000 predictors that held the category down most, as --reasons; 0: none. */
    int32_t reasons;
    /* 1: those that lifted it most, as --reasons-that lift. */
    int32_t reasons_that_lift;
} nbscore_scoring;

#define NBSCORE_SCORING_INIT \
    { sizeof(nbscore_scoring), 0, 0, 0, 0, 0, 0, 0 }

/* The schema of the scores: a struct of the columns that `nbscore score` adds to a table, with its names and order.
 * Predictions, texts of an Output, names of sub-models, and a reason's field and value are utf8 ("u"); all else is
 * float64 ("g"), the prediction of a target that holds numbers too. Any value may be absent.
 * schema: its content is not looked at; gets the schema, which the caller releases; released when the call fails.
 * Any number of threads at once. */
NBSCORE_CALL int32_t nbscore_score_schema(const nbscore_model* model, const nbscore_scoring* scoring,
                                          struct ArrowSchema* schema, nbscore_error** error);

/* Scores cases.
 * cases: a struct array with a column for each field that the model needs, in any order. Other columns are passed over.
 *     Of a column that is read, the type is utf8 or large utf8, a whole number of 8 to 64 bits with a sign or without,
 *     float32, float64, bool, null, or a dictionary of numbers or texts with indices of any whole type. Among texts a
 *     number is taken by its digits, and a truth value as "true" or "false". Among numbers a truth value is 1 or 0, and
 *     texts are refused; only by the standard's rule they are the numbers that they hold, or invalid. An empty text is
 *     a value, other than in a table. Whole numbers beyond 53 bits are refused. Nothing is copied and nothing released:
 *     schema and array stay the caller's. How long a buffer is cannot be seen from here; all else is checked.
 * Derived fields of the document are computed; their columns are never given.
 * scores: its content is not looked at; gets the scores, a struct array of nbscore_score_schema's schema with as many
 *     entries as there are cases, which the caller releases, on any thread; released when the call fails.
 * Any number of threads at once, each with cases of its own. */
NBSCORE_CALL int32_t nbscore_score(const nbscore_model* model, const nbscore_scoring* scoring,
                                   const struct ArrowSchema* schema, const struct ArrowArray* cases,
                                   struct ArrowArray* scores, nbscore_error** error);

/* Makes a stream of scores of a stream of cases: each array is scored when its scores are asked for.
 * cases: taken over where the call succeeds, and then released with the stream of scores; else it stays the caller's.
 * scores: its content is not looked at; gets the stream, which the caller releases. It does not need the model's handle
 *     any more. Its get_next returns EINVAL for cases that do not fit, ENOMEM, ECANCELED, EIO for anything else, or
 *     what the stream of cases answered; get_last_error tells more. Used by one thread at a time. */
NBSCORE_CALL int32_t nbscore_score_stream(const nbscore_model* model, const nbscore_scoring* scoring,
                                          struct ArrowArrayStream* cases, struct ArrowArrayStream* scores,
                                          nbscore_error** error);

/* ---- Why cases are scored as they are --------------------------------------------------------------------------- */

/* What is told of cases. */
typedef struct nbscore_explaining {
    /* sizeof(nbscore_explaining) */
    size_t size;
    /* As in nbscore_scoring. */
    int32_t lacking_as_absent;
    /* 1: also what scoring multiplies, for each category of the target. */
    int32_t factors;
    /* The target's categories that are weighed, as --category and --against of `nbscore explain`; null: those that it
     * takes by itself. */
    const char* category;
    const char* against;
    /* Of a set, the name of the only sub-model that is told of, as --model; null: all. */
    const char* sub_model;
} nbscore_explaining;

#define NBSCORE_EXPLAINING_INIT \
    { sizeof(nbscore_explaining), 0, 0, NULL, NULL, NULL }

/* The schema of evidence (docs/explain.md): a struct of these columns, with an entry for each term of each case; of a
 * set, for each term of each case and sub-model.
 *     case       int64 ("l"): the position of the case among those that were given, from 0
 *     model      utf8 ("u"), of a set alone: the sub-model
 *     state, category, against, term, predictor, value, use                          utf8
 *     weight, against_average, average, lowest, highest                              float64 ("g"), natural logarithms
 * They hold what the rows of `nbscore explain --format csv` hold; where a cell is empty, the value is absent. Terms are
 * "prior", then "predictor" for each, then "sum". Where factors are asked for, further columns of float64 are
 *     factor_<category>  for each category of the target: of the prior term the prior, of a predictor its factor, of
 *                        the sum the probability
 *     exponent_<category>  where the model has densities: the factor is to be multiplied by 2 to this power
 * schema: its content is not looked at; gets the schema, which the caller releases; released when the call fails.
 * Any number of threads at once. */
NBSCORE_CALL int32_t nbscore_explain_schema(const nbscore_model* model, const nbscore_explaining* explaining,
                                            struct ArrowSchema* schema, nbscore_error** error);

/* Tells why cases are scored as they are.
 * cases: as for nbscore_score.
 * evidence: its content is not looked at; gets a struct array of nbscore_explain_schema's schema, which the caller
 *     releases, on any thread; released when the call fails. Many cases make a long one: give some at a time.
 * Any number of threads at once, each with cases of its own. */
NBSCORE_CALL int32_t nbscore_explain(const nbscore_model* model, const nbscore_explaining* explaining,
                                     const struct ArrowSchema* schema, const struct ArrowArray* cases,
                                     struct ArrowArray* evidence, nbscore_error** error);

/* ---- One case ---------------------------------------------------------------------------------------------------- */

/* A number that is missing, in answers and where numbers are set. */
#define NBSCORE_MISSING (-1.7976931348623157e308)

/* A case that is set field by field and scored as often as wanted: what is set stays until it is set again. Setting and
 * scoring ask for no memory, unless a text is longer than any before, a field declares missing values, the digits of a
 * number among texts are more than 15, a set has more than 64 target categories, or derived fields ask for some.
 * A row shares the model, whose handle may be closed before. It is used by one thread at a time; rows know nothing of
 * each other. */
typedef struct nbscore_row nbscore_row;

/* What a case is answered with. */
typedef struct nbscore_answer {
    /* Of a single classifier the position of the predicted category, and its probability; of a case without a result,
     * and of a set, -1 and NBSCORE_MISSING. */
    int32_t predicted;
    int32_t reserved;
    double confidence;
    /* Of a single classifier the probability of each category, of a set the score of each sub-model: as many as
     * nbscore_answer_name has names for. They belong to the row, until it is scored again or freed. */
    const double* numbers;
    size_t count;
} nbscore_answer;

/* A sub-model of a set by its position, and its score. */
typedef struct nbscore_ranked {
    size_t position;
    double score;
} nbscore_ranked;

/* Makes a row of a case without any values.
 * row: gets the row, which the caller frees with nbscore_row_free; null when the call fails.
 * Any number of threads at once. */
NBSCORE_CALL int32_t nbscore_row_make(const nbscore_model* model, nbscore_row** row, nbscore_error** error);
/* Frees a row; null is none. */
NBSCORE_CALL void nbscore_row_free(nbscore_row* row);

/* The position of a field in every row of the model: a number from 0, for the calls below. A name that the model does
 * not read is an error (NBSCORE_BAD_CASES).
 * position: gets the position; SIZE_MAX when the call fails.
 * Any number of threads at once. */
NBSCORE_CALL int32_t nbscore_find_field(const nbscore_model* model, const char* name, size_t* position,
                                        nbscore_error** error);
/* The name of the field at a position, or null behind the last one and without a model. It lives as long as the model.
 * Any number of threads at once. */
NBSCORE_CALL const char* nbscore_field_name(const nbscore_model* model, size_t position);
/* The same for what a case is answered with: categories of a single classifier, and the names that the scores' columns
 * have for the sub-models of a set. */
NBSCORE_CALL const char* nbscore_answer_name(const nbscore_model* model, size_t position);

/* Set a field. What a value means is what it means in a column: a number among texts is taken by its digits, and a text
 * among numbers is an error (NBSCORE_BAD_CASES), except by the standard's rule.
 * text: of `size` bytes, copied; null only with size 0. An empty text is a value.
 * number: a NaN is a value, NBSCORE_MISSING none.
 * When a call fails, the field stays as it was, but where memory ran out it may be missing. */
NBSCORE_CALL int32_t nbscore_row_set_text(nbscore_row* row, size_t field, const char* text, size_t size,
                                          nbscore_error** error);
NBSCORE_CALL int32_t nbscore_row_set_number(nbscore_row* row, size_t field, double number, nbscore_error** error);
NBSCORE_CALL int32_t nbscore_row_set_missing(nbscore_row* row, size_t field, nbscore_error** error);

/* Scores the case as it is set now. Derived fields of the document are computed where a field that they read was set
 * since. By the standard's rule these are the usual answers, whatever columns the document's Output asks for.
 * answer: written; its numbers are null when the call fails. */
NBSCORE_CALL int32_t nbscore_row_score(nbscore_row* row, nbscore_answer* answer, nbscore_error** error);
/* Scores it and tells the highest scores of a set, the highest first, equal ones in the order of the sub-models; a NaN
 * is lower than any other. A single classifier has none (NBSCORE_BAD_ARGUMENT).
 * best: room for `count` of them; null only with count 0.
 * given: gets how many were written: count, or as many as there are sub-models; 0 when the call fails. */
NBSCORE_CALL int32_t nbscore_row_best(nbscore_row* row, nbscore_ranked* best, size_t count, size_t* given,
                                      nbscore_error** error);

/* ---- What a model holds, its own test cases, and answers in the caller's memory ---------------------------------- */

/* The model as text for people, as `nbscore display` writes it. The text is freed with nbscore_text_free. Any number of
 * threads at once. */
NBSCORE_CALL int32_t nbscore_display(const nbscore_model* model, char** text, nbscore_error** error);

/* The fields of the model and what scoring tells apart, as JSON that grows only by new names:
 *     fields: of each its name, whether its values are "numbers" or "texts", whether it is continuous and derived, its
 *         role ("target", "input" or "none"), whether cases are searched for it ("read") and must have it ("needed"),
 *         the categories that predictors tell apart (numbers, texts, or null), and the cutpoints between bins ("bins",
 *         or null). Of a set they are those of all sub-models together, and the cutpoints those of the first one that
 *         has bins.
 *     target: its name, or null; target_values: "numbers" or "texts"; classes: its categories, in the order of a single
 *         classifier's probabilities; sub_models: of a set the label of each, else null.
 *     output: whether the document's own columns are scored, unless the usual ones are asked for.
 * json: freed with nbscore_text_free. Any number of threads at once. */
NBSCORE_CALL int32_t nbscore_content(const nbscore_model* model, char** json, nbscore_error** error);

/* Scores the test cases that a document carries and compares: the JSON of `nbscore verify --format json`. Cases that
 * differ are no error. The arguments are those of nbscore_open_file and nbscore_open_memory. Any thread. */
NBSCORE_CALL int32_t nbscore_verify_file(const char* path, const nbscore_reading* reading, char** json,
                                         nbscore_error** error);
NBSCORE_CALL int32_t nbscore_verify_memory(const void* bytes, size_t size, const char* name,
                                           const nbscore_reading* reading, char** json, nbscore_error** error);

/* Where answers go that are wanted as plain numbers: memory of the caller's, written for all cases of a call. What is
 * null is not asked for. */
typedef struct nbscore_room {
    /* sizeof(nbscore_room) */
    size_t size;
    /* Of a single classifier, for each case: which of the classes is predicted, from 0, and its probability. -1 and a
     * NaN for a case without a prediction. Null for a set. */
    int32_t* predicted;
    double* confidence;
    /* For each case and class its probability, or for each case and sub-model its score; a NaN where there is none. */
    double* probabilities;
    /* How many classes or sub-models there are: as many as nbscore_content lists. */
    uint64_t columns;
    /* 0: the cases one behind the other, each with all columns; 1: the columns one behind the other. */
    int32_t by_columns;
    int32_t reserved;
} nbscore_room;

#define NBSCORE_ROOM_INIT \
    { sizeof(nbscore_room), NULL, NULL, NULL, 0, 0, 0 }

/* Scores cases as nbscore_score does, without copying answers. Of `scoring` only lacking_as_absent is looked at. When
 * the call fails, what stands in the room is of no use. Any number of threads at once, each with cases and room of its
 * own. */
NBSCORE_CALL int32_t nbscore_score_into(const nbscore_model* model, const nbscore_scoring* scoring,
                                        const struct ArrowSchema* schema, const struct ArrowArray* cases,
                                        const nbscore_room* room, nbscore_error** error);

#ifdef __cplusplus
}
#endif

#endif /* NBSCORE_H */
