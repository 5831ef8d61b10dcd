# Fits naiveBayes of the package e1071 to data that R ships.
#
#     Rscript r_models.R FOLDER
#
# Each model gets a folder: cases.csv with the cases, answers.csv with what predict gives them, figures.csv with what
# the model holds (kind, field, value, category, figure), settings.csv with the target and predict's threshold.

suppressPackageStartupMessages(library(e1071))
folder <- commandArgs(trailingOnly = TRUE)[1]

exact <- function(numbers) ifelse(is.na(numbers), "", sprintf("%.17g", numbers))
as_text <- function(column) if (is.numeric(column)) exact(column) else ifelse(is.na(column), "", as.character(column))

put <- function(table, ...) {
    table[] <- lapply(table, as_text)
    write.csv(table, file.path(folder, ...), row.names = FALSE, quote = TRUE)
}

figures_of <- function(model) {
    counts <- model$apriori
    rows <- list(data.frame(kind = "count", field = "", value = "", category = names(counts),
                            figure = as.vector(counts)))
    for (field in names(model$tables)) {
        table <- model$tables[[field]]
        is_number <- is.null(colnames(table))
        values <- if (is_number) c("mean", "deviation") else colnames(table)
        kind <- if (is_number) "density" else "share"
        for (column in seq_along(values))
            rows[[length(rows) + 1]] <- data.frame(kind = kind, field = field, value = values[column],
                                                   category = rownames(table), figure = as.vector(table[, column]))
    }
    do.call(rbind, rows)
}

# @param far what the numbers of the cases are multiplied by, so that densities are exactly 0
fit <- function(name, data, target, laplace = 0, threshold = 0.001, far = 1) {
    data[[target]] <- factor(data[[target]])
    inputs <- data[setdiff(names(data), target)]
    trained <- seq(1, nrow(data), by = 2)
    model <- naiveBayes(inputs[trained, , drop = FALSE], data[[target]][trained], laplace = laplace)
    are_numbers <- sapply(inputs, is.numeric)
    inputs[are_numbers] <- inputs[are_numbers] * far
    shares <- predict(model, inputs, type = "raw", threshold = threshold)
    answers <- as.data.frame(shares)
    names(answers) <- colnames(shares)
    answers[["predicted category"]] <- as.character(predict(model, inputs, threshold = threshold))
    dir.create(file.path(folder, name), recursive = TRUE)
    put(inputs, name, "cases.csv")
    put(answers, name, "answers.csv")
    put(figures_of(model), name, "figures.csv")
    put(data.frame(target = target, threshold = threshold), name, "settings.csv")
}

people <- function(table) {
    counted <- as.data.frame(table)
    counted[rep(seq_len(nrow(counted)), counted$Freq), setdiff(names(counted), "Freq")]
}

set.seed(1)  # only the order of the cases is drawn
shuffled <- function(data) data[sample(nrow(data)), , drop = FALSE]

fit("iris", iris, "Species")
fit("iris with a high threshold", iris, "Species", threshold = 0.05)
fit("iris far away", iris, "Species", far = 20)
fit("titanic", shuffled(people(Titanic)), "Survived")
fit("titanic with laplace", shuffled(people(Titanic)), "Survived", laplace = 3)
fit("admissions", shuffled(people(UCBAdmissions)), "Admit")
fit("hair and eyes", shuffled(people(HairEyeColor)), "Hair")
fit("air", airquality[c("Ozone", "Solar.R", "Wind", "Temp", "Month")], "Month")
fit("births", infert[c("education", "age", "parity", "induced", "spontaneous", "case")], "education")
fit("cars", transform(mtcars, gear = factor(gear), am = factor(am), vs = factor(vs))[c(1:9, 11, 10)], "gear")
fit("feed", shuffled(chickwts), "feed")
fit("breaks", shuffled(warpbreaks), "tension", laplace = 1)
fit("sprays", shuffled(InsectSprays), "spray")
fit("crimes", transform(USArrests, region = state.region), "region")
fit("biopsies", MASS::biopsy[-1], "class")
fit("crabs", MASS::crabs[-3], "sex")
fit("survey", MASS::survey, "Smoke")
fit("cars of 1993", MASS::Cars93[c("Type", "Price", "AirBags", "Cylinders", "Rear.seat.room", "Origin")],
    "Type")
