"""What the readers of the peers' models hand on."""
import dataclasses
import xml.etree.ElementTree as ElementTree


@dataclasses.dataclass
class Answers:
    """A model as a document, its table, and what its maker gives for each case."""
    name: str
    document: ElementTree.Element
    rows: list
    target: str
    categories: list
    probabilities: list
    predicted: list
    options: list = dataclasses.field(default_factory=list)
