#include "FindstrExpression.h"
#include "FindstrPattern.h"

#include <QtTest>

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

/// How much work the search's patterns make, counted and not timed.
class SearchSteps : public QObject
{
    Q_OBJECT

private slots:
    void growWithTheLineNotWithItsSquare_data();
    void growWithTheLineNotWithItsSquare();
    void showWhatBacktrackingWouldCost();
};

namespace {

struct Steps
{
    const std::string &pattern;
    quint64 count = 0;
    quint64 lineLength = 0;
};

/// Called before each item of a pattern that the library's interpreter tries.
int countStep(pcre2_callout_block *block, void *data)
{
    auto &steps = *static_cast<Steps *>(data);
    const bool runsToTheEnd = steps.pattern.compare(block->pattern_position, 7, "[^\\n]*+") == 0;
    steps.count += runsToTheEnd ? steps.lineLength : 1;
    return 0;
}

/// How many bytes and items are looked at until the whole line is known not to match.
quint64 stepsToFail(const std::string &pattern, int length)
{
    const QByteArray line = QByteArray(length, 'a') + '\n';
    Steps steps{pattern, 0, quint64(length)};
    int error = 0;
    PCRE2_SIZE offset = 0;
    pcre2_code *code = pcre2_compile(reinterpret_cast<PCRE2_SPTR>(pattern.data()), pattern.size(),
                                     PCRE2_MULTILINE | PCRE2_NO_START_OPTIMIZE | PCRE2_AUTO_CALLOUT,
                                     &error, &offset, nullptr);
    pcre2_match_context *context = pcre2_match_context_create(nullptr);
    pcre2_set_callout(context, countStep, &steps);
    pcre2_match_data *match = pcre2_match_data_create(1, nullptr);
    const int result = pcre2_match(code, reinterpret_cast<PCRE2_SPTR>(line.data()),
                                   std::size_t(line.size()), 0, 0, match, context);
    pcre2_match_data_free(match);
    pcre2_match_context_free(context);
    pcre2_code_free(code);
    return result == PCRE2_ERROR_NOMATCH ? steps.count : 0;
}

quint64 stepsOf(const QByteArray &keyword, int length)
{
    const auto expression = simplified(parseFindstr(keyword.toStdString()).front());
    return stepsToFail(toPattern(expression).text, length);
}

} // namespace

void SearchSteps::growWithTheLineNotWithItsSquare_data()
{
    QTest::addColumn<QByteArray>("keyword");

    for (const char *keyword : {".*.*.*x", "a.*a.*a.*x", "aa*x", "^a*a*a*x", "a[ab]*a[ab]*x$",
                                ".*a.*$x", "a.*x$", "\\<a.*\\<b.*x", "a.a.a.*x", "x.*a"})
        QTest::newRow(keyword) << QByteArray(keyword);
}

void SearchSteps::growWithTheLineNotWithItsSquare()
{
    QFETCH(QByteArray, keyword);
    const quint64 steps = stepsOf(keyword, 1000);
    QVERIFY2(steps > 0, "the line was to be one that does not match");
    QVERIFY2(steps <= 20'000, qPrintable(QString::number(steps)));
    const quint64 more = stepsOf(keyword, 10'000);
    QVERIFY2(more <= 11 * steps, qPrintable(QString::number(more)));
}

void SearchSteps::showWhatBacktrackingWouldCost()
{
    const std::string backtracking = "a[^\\n]*a[^\\n]*x";
    QVERIFY(stepsToFail(backtracking, 200) > 50 * stepsToFail(backtracking, 20));
}

QTEST_APPLESS_MAIN(SearchSteps)
#include "tst_search_steps.moc"
