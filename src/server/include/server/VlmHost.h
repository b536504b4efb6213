#ifndef VLM_HOST_H
#define VLM_HOST_H

#include <stdint.h>  // NOLINT(modernize-deprecated-headers): C has no other

/* What a host hands in, in plain C: the library and its host may come from different compilers. All of it is optional;
 * without it the library uses what the machine has. Texts are UTF-8 and end with a zero. */

#ifdef _WIN32
#define VLM_CALL __stdcall
#define VLM_EXPORT
#else
#define VLM_CALL
#define VLM_EXPORT __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

struct IDispatch;

/* What VlmHost.tell is told: text to be written as it stands, line ends and all (text for people may come in pieces of
 * a line); why a step could not be done, one sentence without a line end; steps and answers that nothing used, each a
 * sentence that ends its line. */
enum { VLM_TELL_EVENT = 0, VLM_TELL_FAILED = 1, VLM_TELL_UNUSED = 2 };

typedef struct VlmHost {
    uint32_t size; /* of this structure as the host knows it; what lies behind is zero */

    /* Who shows dialogs: "console" plays the steps, "qt" shows windows of a Linux desktop. NULL: the machine's own
     * windows; where there are none ShowDialog fails and says so. */
    const char* toolkit;

    /* Of the console: what a user does, one step each, and whether events are text for people instead of one JSON
     * object a line. */
    const char* const* steps;
    uint32_t stepCount;
    uint32_t readable;

    /* Events of the console as they happen; the rest when the host is replaced or taken away. NULL: nobody listens. */
    void(VLM_CALL* tell)(void* context, int32_t kind, const char* text);
    /* Starts a program and does not wait for it ("Notepad.exe C:\...\report.txt"); a failed HRESULT, with an error
     * object, is told to the user. NULL: the machine's programs; on the console they are events only. */
    int32_t(VLM_CALL* start)(void* context, const char* command);
    void* context;

    const char* workFolder; /* where the library writes; NULL: what `utility` says, else the machine's temporary one */
    const char* installFolder; /* of the host application; NULL: as its setup entered it into the registry */
    const char* settingsFile;  /* an ini file; NULL: the user's settings of this machine */
    const char* today;         /* "YYYY-MM-DD"; NULL: the clock */

    /* Gives the host's own services, each member a new object; called by name. A member that it does not have is the
     * library's own, but for the client of the health-card system, which is then missing:
     *
     *   PatientRecord, ExemptionRecord: Connection, LockSrv, Rights (set, objects), AddNew, Load(ID, ForEdit),
     *     Fields(Name).Value, Save (True when stored), ID (0 when nothing is loaded)
     *   FiscalCodeDecoder: Connection (set), FiscalCode (set; fails when not valid), BirthDate (dd/mm/yyyy), Sex,
     *     BirthComune (its IDComune, 0 for none)
     *   ParameterStore: Connection, LockSrv (set), Load(Specialist, Kind), Parameters(Name).Value
     *   HealthCardClient: ToolPath, CertificatePath (set), RequestPatients(Request), RequestExemptions(Request), which
     *     give a response: Error (Boolean), Errors (of Code, Description), Persons (of FiscalCode, Surname, FirstName,
     *     ChoiceDate, ExpiryDate, SuspensionDate, Exemptions (of Code, Start, End)); collections have _NewEnum
     *   HealthCardRequest: Credentials (UserId, Password, PIN, ASLCode, RegionCode; set)
     *
     * LockSrv and Rights are those that the component was given. The library's own records lock what they change by
     * LockSrv's LockRecord(Table, Key) and UnlockRecord(Table, Key), and do without a lock when there is no LockSrv. */
    struct IDispatch* components;
    /* The host's utility object, called by name: WorkFolder. */
    struct IDispatch* utility;
} VlmHost;

/* Texts are copied and objects kept before the call returns; functions are called from inside the host's calls only, in
 * the host's thread, and let no exception out. NULL takes everything away, and the library-wide connection with it.
 * S_FALSE (1), and no change, while objects of the library are alive. A failure is a negative HRESULT with an error
 * object, and changes nothing. */
VLM_EXPORT int32_t VLM_CALL VlmSetHost(const VlmHost* host);

#ifdef __cplusplus
}
#endif

#endif
