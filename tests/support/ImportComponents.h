#pragma once

#include "services/ReferenceHostComponents.h"
#include "values/Error.h"

namespace vlm::test {

/// The reference host's components with a health-card system that answers what the test says.
class ImportComponents final : public host::ReferenceHostComponents {
public:
    using ReferenceHostComponents::ReferenceHostComponents;

    std::unique_ptr<HealthCardClient> NewHealthCardClient() override { return std::make_unique<Client>(*this); }

    HealthCardClient::Response response;  // to every request
    std::string failure;                  // thrown instead, when there is one
    // What the last client was given, and what was asked of it.
    std::string toolPath, certificatePath;
    HealthCardClient::Credentials credentials;
    std::vector<std::string> requests;  // "patients", "exemptions"

private:
    struct Client final : HealthCardClient {
        explicit Client(ImportComponents& owner) : test(owner) {}
        void SetToolPath(const std::string& path) override { test.toolPath = path; }
        void SetCertificatePath(const std::string& path) override { test.certificatePath = path; }
        Response RequestPatients(const Credentials& given) override { return Answer("patients", given); }
        Response RequestExemptions(const Credentials& given) override { return Answer("exemptions", given); }
        Response Answer(const char* request, const Credentials& given) {
            test.requests.push_back(request);
            test.credentials = given;
            if (!test.failure.empty()) throw Error(test.failure);
            return test.response;
        }
        ImportComponents& test;
    };
};

}  // namespace vlm::test
