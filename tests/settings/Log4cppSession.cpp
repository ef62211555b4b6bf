#include "Log4cppSession.h"

#include <log4cpp/Appender.hh>
#include <log4cpp/Category.hh>
#include <log4cpp/PropertyConfigurator.hh>

std::string logEveryLevel(const std::string &propertiesFile)
{
    try {
        log4cpp::PropertyConfigurator::configure(propertiesFile);
    } catch (const log4cpp::ConfigureFailure &failure) {
        return failure.what();
    }
    for (const char *name : {"qzsdk", "elsewhere"}) {
        log4cpp::Category &category = log4cpp::Category::getInstance(name);
        category.debug("a debug message");
        category.info("an info message");
        category.warn("a warn message");
        category.error("an error message");
        category.fatal("a fatal message");
    }
    log4cpp::Category::shutdown();
    // Categories do not own the appenders that a file configures.
    for (const char *name : {"a_root", "a_qzsdk"})
        delete log4cpp::Appender::getAppender(name);
    return {};
}
