#include "automation/locale.h"

#include <utility>

namespace tarncom32::automation {

namespace {

Locale& userLocale() {
    static Locale settings;
    return settings;
}

thread_local const Locale* threadLocale = nullptr;

} // namespace

const Locale& locale() {
    return threadLocale ? *threadLocale : userLocale();
}

void setUserLocale(Locale settings) {
    userLocale() = std::move(settings);
}

LocaleScope::LocaleScope(const Locale& settings) : previous_(std::exchange(threadLocale, &settings)) {}

LocaleScope::~LocaleScope() {
    threadLocale = previous_;
}

} // namespace tarncom32::automation
