"""Fills the measured parts of a document, and leaves the prose between them alone."""

import re


def filled(text, parts):
    """The text with what stands between `<!-- name -->` and `<!-- end -->` replaced.

    Raises ValueError when the document lacks one of the parts.
    """
    for name, lines in parts.items():
        block = re.compile(rf"(<!-- {re.escape(name)} -->\n).*?(<!-- end -->)", flags=re.S)
        body = "\n" + "\n".join(lines) + "\n\n"
        text, count = block.subn(lambda found, body=body: found[1] + body + found[2], text)
        if count != 1:
            raise ValueError(f"the document must have one part '<!-- {name} -->', not {count}")
    return text
