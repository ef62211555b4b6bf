"""The windows' texts in the language of the test run, by English text."""

import os
import pathlib
import xml.etree.ElementTree

LANGUAGE = os.environ.get("VANTREL_LANGUAGE", "english")

# Texts that are equal in both languages are left out.
CHINESE = {
    "Client Dump": "客户端Dump",
    "CopyAll": "拷贝所有日志",
    "CopySelected": "拷贝选择日志",
    "Event Type": "导出选项",
    "Export": "导出",
    "Export All SDK Log": "导出所有SDK日志",
    "Export Selected SDK Log": "导出选择SDK日志",
    "Export info finished !": "导出信息结束！",
    "Export to File": "导出路径",
    "Exporting information...": "正在导出信息...",
    "File Name": "文件名称",
    "File Size": "文件大小",
    "File Time": "文件时间",
    "Log Level": "日志等级",
    "Log Level Setting": "日志等级",
    "Log Message": "日志内容",
    "Log Source": "日志来源",
    "Log Timestamp": "日志时间",
    "LogSettingsDlg": "日志配置",
    "LogSource(Process Name)": "日志源（进程名）",
    "LogViewer": "日志浏览",
    "NIC Information": "网卡信息",
    "SDK Log": "SDK日志",
    "Save ZIP File": "保存ZIP压缩包",
    "Select Log Config File": "选择日志配置文件",
    "System Dump": "系统蓝屏日志",
    "System Information": "系统信息",
    "System Log": "系统日志",
    "View": "查看",
    "No line matches. Empty the field and press Enter to see the whole log.": (
        "没有匹配的日志行。清空搜索框并按回车键可查看全部日志。"
    ),
    # The toolkit's own texts in its file dialog.
    "Cancel": "取消",
    "File name:": "文件名称(N)：",
    "Open": "打开(O)",
    "Save": "保存(S)",
}


# All texts that are not fixed.
HINTS = pathlib.Path(__file__).parents[2] / "resources" / "Hints_CN.ts"
CHINESE.update(
    (message.findtext("source"), message.findtext("translation"))
    for message in xml.etree.ElementTree.parse(HINTS).iter("message")
)


def tr(english):
    return CHINESE.get(english, english) if LANGUAGE == "chinese" else english
