"""The windows' texts in the language of the test run, by English text."""

import os
import pathlib
import xml.etree.ElementTree

LANGUAGE = os.environ.get("VANTREL_LANGUAGE", "english")

RESOURCES = pathlib.Path(__file__).parents[2] / "resources"

# The toolkit's own texts in its file dialog.
CHINESE = {
    "Cancel": "取消",
    "File name:": "文件名称(N)：",
    "Open": "打开(O)",
    "Save": "保存(S)",
}
for catalogue in "Linguist_CN.ts", "Hints_CN.ts":
    CHINESE.update(
        (message.findtext("source"), message.findtext("translation"))
        for message in xml.etree.ElementTree.parse(RESOURCES / catalogue).iter("message")
    )


def tr(english):
    return CHINESE.get(english, english) if LANGUAGE == "chinese" else english
