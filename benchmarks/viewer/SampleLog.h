#pragma once

#include <QByteArray>

/// @p lines lines of 120 bytes in the SDK's format; 14 in 1,000 are errors that mention a timeout.
inline QByteArray sampleLog(int lines)
{
    static const char *const messages[] = {
        "frame received in 12 ms, 0 packets resent, buffer 4 of 16",
        "heartbeat answered after 3 ms", "register 0x00000A00 written, value 0x2, acknowledged",
        "frame dropped, trailer missing"};
    static const char *const levels[] = {"INFO", "DEBUG", "INFO", "WARN"};
    static const char *const sources[] = {"CameraClient", "StreamReceiver", "GvcpChannel"};
    QByteArray text;
    text.reserve(lines * 120);
    for (int i = 0; i < lines; ++i) {
        const bool isError = i * 7 % 1000 < 14;
        const char *const level = isError ? "ERROR" : levels[i % 4];
        QByteArray line =
            "2024-03-02 12:" + QByteArray::number(i / 60 % 60).rightJustified(2, '0') + ':' +
            QByteArray::number(i % 60).rightJustified(2, '0') + '.' +
            QByteArray::number(i % 1000).rightJustified(3, '0') + ' ' + level + " [" +
            QByteArray::number(4000 + i % 7) + "] [" + sources[i % 3] + "] " +
            (isError ? "grab timeout after 1000 ms" : messages[i % 4]) + " #";
        line += QByteArray::number(i).rightJustified(119 - line.size(), '0');
        text += line + '\n';
    }
    return text;
}
