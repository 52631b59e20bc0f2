#include "app/cli/doctor_report.hpp"

#include "app/cli/session_options.hpp"

#include <ostream>

namespace orvel {

int reportChecks(std::span<const ServiceCheck> checks, std::ostream& out) {
    int status = 0;
    for (const ServiceCheck& check : checks) {
        const char* mark = check.isOk ? "ok     " : check.isEssential ? "MISSING" : "absent ";
        out << mark << "  " << check.name << ": " << check.finding;
        if (!check.remedy.empty()) out << " -> " << check.remedy;
        out << '\n';
        if (check.isEssential && !check.isOk) status = session::kFailed;
    }
    return status;
}

}  // namespace orvel
