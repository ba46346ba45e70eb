#pragma once

#include "platform/linux/checkup/CheckupFacts.h"
#include "platform/linux/checkup/Finding.h"

namespace veilkeep {

// What the facts mean, one thing each. Nothing is looked at but the facts.
CheckupFinding surroundingsFinding(const CheckupFacts& facts);
CheckupFinding sessionBusFinding(const CheckupFacts& facts);
CheckupFinding trayFinding(const CheckupFacts& facts);
CheckupFinding logindFinding(const CheckupFacts& facts);
CheckupFinding sleepFinding(const CheckupFacts& facts);
CheckupFinding lockFinding(const CheckupFacts& facts);
CheckupFinding autoHideFinding(const CheckupFacts& facts);
CheckupFinding rightsFinding(const CheckupFacts& facts);
CheckupFinding agentFinding(const CheckupFacts& facts);
CheckupFinding fileManagersFinding(const CheckupFacts& facts);
CheckupFinding disksFinding(const CheckupFacts& facts);
CheckupFinding dataFinding(const CheckupFacts& facts);
CheckupFinding settingsFinding(const CheckupFacts& facts);
CheckupFinding programFinding(const CheckupFacts& facts);
CheckupFinding windowFinding(const CheckupFacts& facts);
CheckupFinding updatesFinding(const CheckupFacts& facts);

// Helps for them.
bool isDesktop(const CheckupFacts& facts, std::initializer_list<const char*> names);

// Whether the system bus does not tell who is on it, which the finding says then, with what does not work so.
bool isSystemBusAtFault(const CheckupFacts& facts, const QString& without, CheckupFinding& finding);

} // namespace veilkeep
