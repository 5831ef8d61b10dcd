# Shows a small CSV table (without quotes) in aligned columns, with long fractions rounded to 4 digits.
BEGIN { FS = "," }
{
    columns = NF > columns ? NF : columns
    for (i = 1; i <= NF; ++i) {
        cell[NR, i] = $i ~ /^[0-9]\.[0-9][0-9][0-9][0-9][0-9]+$/ ? sprintf("%.4f", $i) : $i
        if (length(cell[NR, i]) > width[i]) width[i] = length(cell[NR, i])
    }
}
END {
    for (row = 1; row <= NR; ++row) {
        line = ""
        for (i = 1; i <= columns; ++i) line = line sprintf("%-" width[i] "s  ", cell[row, i])
        sub(/ +$/, "", line)
        print line
        if (row == 1) {
            gsub(/./, "-", line)
            print line
        }
    }
}
