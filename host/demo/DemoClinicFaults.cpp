#include "DemoClinicFaults.h"

#include <algorithm>

namespace vlm::host {

namespace {

using SpoilPatient = void (*)(DemoPatient&);
using SpoilDocument = void (*)(DemoDocument&);

void Anonymous(DemoPatient& patient) { patient.consent = kConsentAnonymous; }
void NamedWithoutCode(DemoPatient& patient) {
    patient.consent = kConsentNamed;
    patient.fiscalCode.clear();
}

constexpr SpoilPatient kPatientFaults[kFaultyPatients] = {
    [](DemoPatient& one) { one.numeroASL.clear(); },
    [](DemoPatient& one) {
        Anonymous(one);
        one.fiscalCode.clear();
    },
    [](DemoPatient& one) {
        NamedWithoutCode(one);
        one.birth.reset();
    },
    [](DemoPatient& one) { one.sex = ""; },
    [](DemoPatient& one) { one.sex = "m"; },  // only capitals count
    [](DemoPatient& one) { one.homeComune = 0; },
    [](DemoPatient& one) { one.doctorCode.clear(); },
    [](DemoPatient& one) { NamedWithoutCode(one); },  // no fault: names and birth date tell who it is
    [](DemoPatient& one) {
        NamedWithoutCode(one);
        one.surname.clear();
    },
    [](DemoPatient& one) {
        one.numeroASL.clear();
        one.sex = "";
        one.homeComune = 0;
    },
};

constexpr SpoilDocument kSicilianFaults[] = {
    [](DemoDocument& one) { one.withPrescription = false; },
    [](DemoDocument& one) { one.services.back().withCode = false; },
    [](DemoDocument& one) { one.share = 0; },
    [](DemoDocument& one) { one.specialist = 0; },
    [](DemoDocument& one) { one.branchCode = 0; },
    [](DemoDocument& one) { one.specialist = one.branchCode = 0; },
};

constexpr SpoilDocument kCyclicFaults[] = {
    [](DemoDocument& one) { one.cycleStart.reset(); },
    [](DemoDocument& one) { one.cycleStart = one.day; },  // a cycle begins before it is billed
    [](DemoDocument& one) { one.cycleStart = Date(one.day.Serial() + 5); },
    [](DemoDocument& one) { one.reported.reset(); },
};

constexpr SpoilDocument kSingleFaults[] = {
    [](DemoDocument& one) { one.cycleStart = Date(one.day.Serial() - 10); },
    [](DemoDocument& one) { one.reported = Date(one.day.Serial() + 1); },
    [](DemoDocument& one) { one.assigned = Date(one.day.Serial() - 1); },
    [](DemoDocument& one) { one.assigned.reset(); },
    [](DemoDocument& one) {
        one.reported.reset();
        one.assigned.reset();
        one.cycleStart = one.day;
    },
};

}  // namespace

void DemoClinicFaults::SpoilPatients(const DemoClinicProfile& clinic, std::span<DemoPatient> kept) {
    if (clinic.region != DemoRegion::Sicilia) return;
    for (std::size_t i = 0; i < kept.size(); ++i) kPatientFaults[i % kFaultyPatients](kept[i]);
}

DemoDocument DemoClinicFaults::Sound(const DemoPatient& patient, bool cyclic) {
    const DemoBranch& branch = DemoBranches()[kFaultyBranch - 1];
    return services_.Sound(branch, patient, day_, cyclic, 2);
}

void DemoClinicFaults::Fill(DemoMonth month, std::span<const DemoPatient> sound, std::span<const DemoPatient> spoilt) {
    day_ = month.WorkingDays().back();
    if (clinic_.region == DemoRegion::Sicilia)
        FillSicilia(sound, spoilt);
    else
        FillPuglia(sound);
}

void DemoClinicFaults::FillSicilia(std::span<const DemoPatient> sound, std::span<const DemoPatient> spoilt) {
    for (const DemoPatient& patient : spoilt) {
        DemoDocument document = Sound(patient, false);
        if (patient.doctorCode.empty()) document.doctor = 0;
        documents_.Add(document, patient);
    }
    std::size_t next = 0;
    for (SpoilDocument spoil : kSicilianFaults) {
        const DemoPatient& patient = sound[next++ % sound.size()];
        DemoDocument document = Sound(patient, false);
        spoil(document);
        documents_.Add(document, patient);
    }
}

void DemoClinicFaults::FillPuglia(std::span<const DemoPatient> sound) {
    std::size_t next = 0;
    const auto fill = [&](std::span<const SpoilDocument> faults, bool cyclic) {
        for (SpoilDocument spoil : faults) {
            const DemoPatient& patient = sound[next++ % sound.size()];
            DemoDocument document = Sound(patient, cyclic);
            spoil(document);
            documents_.Add(document, patient);
        }
    };
    fill(kCyclicFaults, true);
    fill(kSingleFaults, false);
}

}  // namespace vlm::host
