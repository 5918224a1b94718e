/*
 * Host interface of the Varnel4 Lin Phase EQ library, interface version 6.
 *
 * The library exports two functions. HLA2Acquire hands out the plug-in table; everything else
 * goes through tables of function pointers. Every function takes the table it was read from as
 * its first argument. The last word of each table belongs to the library; hosts leave it alone.
 *
 * Threads: the process entries ProcessReplacing and ProcessSeparate run on the host's audio
 * thread, SetParameterValue and SetParameterNormalized on any thread, everything else on the
 * host's main thread.
 *
 * This header is plain C and needs nothing else.
 */
#ifndef VARNEL4_HLA2_H
#define VARNEL4_HLA2_H

#ifdef __cplusplus
extern "C" {
#endif

#define HLA2_INTERFACE_VERSION 6

/* Smallest buffers a host passes to GetVersionStrings; they must be zeroed, since the library
   writes the characters without a terminator. */
#define HLA2_VERSION_STRING_SIZE 16

typedef struct HLA2Host HLA2Host;
typedef struct HLA2PlugIn HLA2PlugIn;
typedef struct HLA2Process HLA2Process;
typedef struct HLA2GUI HLA2GUI;
typedef struct HLA2PlugInAudio HLA2PlugInAudio;

/* The host's callback table. The library calls the 2nd, 3rd and 6th word. */
struct HLA2Host {
    void* user; /* the host's own */
    /* Tempo in beats per minute and two transport positions; all three arrive as 0. */
    void (*GetTransport)(HLA2Host* host, float* bpm, double* positionA, double* positionB);
    /* A parameter moved from inside the plug-in; never called for the host's own writes. */
    void (*NotifyParameter)(HLA2Host* host, int slot, float plain, float normalised);
    void* reserved3;
    void* reserved4;
    /* Asked once per process; non-zero means true. */
    int (*GetCapabilityFlag)(HLA2Host* host);
};

struct HLA2PlugIn {
    int (*GetProcessCount)(HLA2PlugIn* self);
    /* kind 0 is the only kind; any other yields null. */
    HLA2Process* (*CreateProcess)(HLA2PlugIn* self, HLA2Host* host, int kind);
    void (*DestroyProcess)(HLA2PlugIn* self, HLA2Process* process);
    /* One editor per process, made on first request; null for an unknown process. */
    HLA2GUI* (*GetGUI)(HLA2PlugIn* self, HLA2Process* process);
    HLA2PlugInAudio* (*GetPlugInAudio)(HLA2PlugIn* self);
    /* Version and build code, copied without terminators. */
    void (*GetVersionStrings)(HLA2PlugIn* self, char* version, char* build);
    void* object;
};

struct HLA2Process {
    void (*GetName)(HLA2Process* self, char* buffer, int size);
    void (*GetVendor)(HLA2Process* self, char* buffer, int size);
    int (*GetPlugInType)(HLA2Process* self);
    int (*GetInputCount)(HLA2Process* self);
    int (*GetOutputCount)(HLA2Process* self);
    void (*SetHostInputCount)(HLA2Process* self, int count);
    void (*SetHostOutputCount)(HLA2Process* self, int count);
    void (*Start)(HLA2Process* self);
    int (*Stop)(HLA2Process* self);
    void (*SetBlockSize)(HLA2Process* self, unsigned frames);
    int (*SetSampleRate)(HLA2Process* self, float rate);
    int (*Resume)(HLA2Process* self);
    void (*Suspend)(HLA2Process* self);
    int (*GetLatency)(HLA2Process* self);
    /* frames never exceeds the last SetBlockSize. */
    void (*ProcessReplacing)(HLA2Process* self, float** channels, int frames, void* extra);
    void (*ProcessSeparate)(HLA2Process* self, float** inputs, float** outputs, int frames,
                            void* extra);
    int (*SendMIDI)(HLA2Process* self, const void* events, int count);
    int (*GetParameterCount)(HLA2Process* self);
    void (*GetParameterName)(HLA2Process* self, int index, char* buffer, int size);
    void (*GetParameterDisplay)(HLA2Process* self, int index, char* buffer, int size);
    void (*GetParameterDisplayFor)(HLA2Process* self, int index, float value, char* buffer,
                                   int size);
    float (*ToNormalized)(HLA2Process* self, int index, float plain);
    float (*GetParameterValue)(HLA2Process* self, int index);
    float (*GetParameterNormalized)(HLA2Process* self, int index);
    int (*SetParameterValue)(HLA2Process* self, int index, float plain);
    int (*SetParameterNormalized)(HLA2Process* self, int index, float normalised);
    /* Chunks are bare XML text. The size counts the characters; the text read is also cut at
       its first zero byte. */
    void (*SetBankChunk)(HLA2Process* self, const void* text, int size);
    /* The text stays valid until FreeBankChunk, the next GetBankChunk or DestroyProcess. */
    int (*GetBankChunk)(HLA2Process* self, void** text);
    void (*FreeBankChunk)(HLA2Process* self);
    void (*SetProgramChunk)(HLA2Process* self, const void* text, int size);
    int (*GetProgramChunk)(HLA2Process* self, void** text);
    void (*FreeProgramChunk)(HLA2Process* self);
    int (*GetProgramCount)(HLA2Process* self);
    int (*SetProgram)(HLA2Process* self, int index);
    int (*GetProgram)(HLA2Process* self);
    void (*SetProgramName)(HLA2Process* self, int index, const char* name);
    void (*GetProgramName)(HLA2Process* self, int index, char* buffer, int size);
    int (*CopyProgram)(HLA2Process* self, int source, int target);
    void* (*GetExtension)(HLA2Process* self, void* what);
    void* object;
};

/* The native window of the editor: an X11 window id. */
typedef unsigned long HLA2NativeWindow;

/* Mouse buttons of MouseDown and MouseUp, and the bits of their modifier word. */
#define HLA2_BUTTON_LEFT 1
#define HLA2_BUTTON_MIDDLE 2
#define HLA2_BUTTON_RIGHT 4
#define HLA2_MODIFIER_CONTROL 8
#define HLA2_MODIFIER_SHIFT 16

/* The key of KeyPress: a typed character (8, 9, 10, 13, 27 or 32 to 126), or one of these. */
#define HLA2_KEY_LEFT 0x106
#define HLA2_KEY_RIGHT 0x107
#define HLA2_KEY_UP 0x108
#define HLA2_KEY_DOWN 0x109
#define HLA2_KEY_INSERT 0x10a
#define HLA2_KEY_DELETE 0x10b
#define HLA2_KEY_HOME 0x10c
#define HLA2_KEY_END 0x10d

struct HLA2GUI {
    HLA2Process* (*GetProcess)(HLA2GUI* self);
    void (*GetSize)(HLA2GUI* self, int* width, int* height);
    void (*SetPosition)(HLA2GUI* self, int x, int y);
    void (*SetHostDeliversMouse)(HLA2GUI* self, int delivers);
    void (*SetHostDeliversKeys)(HLA2GUI* self, int delivers);
    void (*Open)(HLA2GUI* self, HLA2NativeWindow parent);
    void (*Close)(HLA2GUI* self);
    void (*Reserved)(HLA2GUI* self);
    void (*Idle)(HLA2GUI* self);
    void (*Invalidate)(HLA2GUI* self, int left, int top, int right, int bottom);
    void (*MouseDown)(HLA2GUI* self, int x, int y, int button, int modifiers);
    void (*MouseUp)(HLA2GUI* self, int x, int y, int button, int modifiers);
    void (*MouseMove)(HLA2GUI* self, int x, int y, int modifiers);
    /* Non-zero when the editor took the key. */
    int (*KeyPress)(HLA2GUI* self, int key, int modifiers, int repeat);
    void* object;
};

struct HLA2PlugInAudio {
    void (*NotifyAudioOn)(HLA2PlugInAudio* self);
    void (*NotifyAudioOff)(HLA2PlugInAudio* self);
    void* object;
};

#if defined(__GNUC__)
#define HLA2_EXPORT __attribute__((visibility("default")))
#else
#define HLA2_EXPORT
#endif

/* Returns the plug-in table, or null for a version other than HLA2_INTERFACE_VERSION (then
   outVersion is left alone). Acquires count: each needs one HLA2Release. */
HLA2_EXPORT HLA2PlugIn* HLA2Acquire(int version, int* outVersion);
HLA2_EXPORT void HLA2Release(void);

typedef HLA2PlugIn* (*HLA2AcquireFunction)(int version, int* outVersion);
typedef void (*HLA2ReleaseFunction)(void);

#ifdef __cplusplus
}
#endif

#endif
