/* The smallest host, in plain C: loads the library, chooses the console for its dialogs, makes a component and opens
 * its dialog, as a user would who closes it again. Nothing of the library's is needed beside its header. Its events go
 * to standard output; 0 when all went well.
 *
 *   host LIBRARY
 */
#include <stdio.h>
#include <stdlib.h>

#include "server/VlmHost.h"

#ifdef _WIN32
#include <windows.h>
#define Function(library, name) ((void (*)(void))GetProcAddress((HMODULE)(library), name))
static void* Load(const char* path) { return (void*)LoadLibraryA(path); }
#else
#include <dlfcn.h>
static void* Load(const char* path) { return dlopen(path, RTLD_NOW); }
typedef void (*AnyFunction)(void);
static AnyFunction Function(void* library, const char* name) {
    union {
        void* object;
        AnyFunction function;
    } found;
    found.object = dlsym(library, name);
    return found.function;
}
#endif

typedef struct Id {
    uint32_t first;
    uint16_t second, third;
    uint8_t rest[8];
} Id;

/* Objects are called by their tables: IUnknown's three functions, then those of the interface. */
typedef struct Factory Factory;
typedef struct FactoryTable {
    int32_t(VLM_CALL* QueryInterface)(Factory* self, const Id* id, void** object);
    uint32_t(VLM_CALL* AddRef)(Factory* self);
    uint32_t(VLM_CALL* Release)(Factory* self);
    int32_t(VLM_CALL* CreateInstance)(Factory* self, void* outer, const Id* id, void** object);
    int32_t(VLM_CALL* LockServer)(Factory* self, int32_t lock);
} FactoryTable;
struct Factory {
    const FactoryTable* table;
};

typedef struct Export Export;
typedef struct ExportTable {
    int32_t(VLM_CALL* QueryInterface)(Export* self, const Id* id, void** object);
    uint32_t(VLM_CALL* AddRef)(Export* self);
    uint32_t(VLM_CALL* Release)(Export* self);
    void* dispatch[4]; /* by name, for scripts */
    int32_t(VLM_CALL* ShowDialog)(Export* self);
} ExportTable;
struct Export {
    const ExportTable* table;
};

static const Id kClassFactory = {0x00000001, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
static const Id kASLExport = {0x800F005F, 0x7CC3, 0x4985, {0x91, 0x75, 0x45, 0x61, 0x51, 0x7F, 0xB9, 0xF2}};
static const Id k_ASLExport = {0x25DA5973, 0xAFFC, 0x4CC9, {0x99, 0xF6, 0xA7, 0xCC, 0x30, 0x4A, 0x0A, 0x9F}};

static void VLM_CALL Tell(void* events, int32_t kind, const char* text) {
    fputs(text, kind == VLM_TELL_EVENT ? stdout : stderr);
    if (kind == VLM_TELL_EVENT) ++*(int*)events;
}

static void Expect(int holds, const char* what) {
    if (holds) return;
    fprintf(stderr, "%s failed\n", what);
    exit(1);
}

int main(int count, char** words) {
    static const char* const steps[] = {"txtPath?", "cmdAnnulla!"};
    void* const library = Load(count == 2 ? words[1] : "");
    int events = 0;
    VlmHost host = {0};
    Factory* factory = NULL;
    Export* component = NULL;
    int32_t(VLM_CALL * setHost)(const VlmHost*);
    int32_t(VLM_CALL * getClass)(const Id*, const Id*, void**);
    int32_t(VLM_CALL * canUnload)(void);

    Expect(library != NULL, "loading the library");
    setHost = (int32_t(VLM_CALL*)(const VlmHost*))Function(library, "VlmSetHost");
    getClass = (int32_t(VLM_CALL*)(const Id*, const Id*, void**))Function(library, "DllGetClassObject");
    canUnload = (int32_t(VLM_CALL*)(void))Function(library, "DllCanUnloadNow");
    Expect(setHost && getClass && canUnload, "finding its functions");

    host.size = sizeof host;
    host.toolkit = "console";
    host.steps = steps;
    host.stepCount = sizeof steps / sizeof *steps;
    host.settingsFile = "host.ini";
    host.tell = Tell;
    host.context = &events;
    Expect(setHost(&host) == 0, "VlmSetHost");
    Expect(getClass(&kASLExport, &kClassFactory, (void**)&factory) == 0, "DllGetClassObject");
    Expect(factory->table->CreateInstance(factory, NULL, &k_ASLExport, (void**)&component) == 0, "CreateInstance");
    factory->table->Release(factory);
    /* A host with a database sets Connection here, to an object that is or behaves like an ADO connection. */
    Expect(component->table->ShowDialog(component) == 0, "ShowDialog");
    Expect(setHost(NULL) == 1, "VlmSetHost while a component is alive");
    component->table->Release(component);
    Expect(setHost(NULL) == 0 && canUnload() == 0, "letting go");
    Expect(events > 0, "hearing of events");
    return 0;
}
