"""Scores people of the Titanic, looks into the model, and draws who would have survived.

    python3 titanic.py [PICTURE.png]

Needs the package nbscore (`pip install ./python`), pandas and matplotlib.
"""

import pathlib
import sys

import pandas as pd

import nbscore

DATA = pathlib.Path(__file__).resolve().parent.parent / "titanic"


def show_scores(model):
    people = pd.read_csv(DATA / "people.csv")
    scored = people.join(model.score(people))
    print(scored[["name", "predicted_survived", "probability_yes"]].round(4).to_string(index=False))


def compare_two_cases(model):
    """What a single value does: the same person of another class."""
    for travels in ("first", "third"):
        scores = model.score_case({"class": travels, "sex": "female", "age": "adult"})
        print(f"a woman of the {travels} class: {scores['probability_yes']:.4f}")


def score_everybody(model):
    """A case for each combination of values that the model knows."""
    fields = {field.name: field.categories for field in model.fields if field.needed}
    frame = pd.MultiIndex.from_product(fields.values(), names=fields).to_frame(index=False)
    frame["survives"] = model.predict_proba(frame)[:, list(model.classes_).index("yes")]
    return frame


def draw(frame, picture):
    import matplotlib

    matplotlib.use("Agg")
    import matplotlib.pyplot as plt

    table = frame.pivot(index="class", columns=["sex", "age"], values="survives")
    table = table.loc[["first", "second", "third", "crew"]]
    axes = table.plot.bar(rot=0, figsize=(8, 4.5), width=0.8)
    axes.set_ylabel("probability of survival")
    axes.set_ylim(0, 1)
    axes.legend([f"{sex}, {age}" for sex, age in table.columns], frameon=False, ncols=4, loc="lower center",
                bbox_to_anchor=(0.5, 1.0))
    plt.tight_layout()
    plt.savefig(picture, dpi=120)


def main():
    model = nbscore.load(DATA / "titanic.pmml")
    show_scores(model)
    compare_two_cases(model)
    draw(score_everybody(model), sys.argv[1] if len(sys.argv) > 1 else "titanic.png")


if __name__ == "__main__":
    main()
