#pragma once
// A small library that has every kind of entry, and another one on which it depends.

namespace vendrel::typelib::test {

// What both know of the parts.
inline constexpr const char* kPartTypesIdl = R"(
import "base.idl";
[uuid(21111111-2222-3333-4444-555555555501)] typedef enum Size { szSmall = 1 } Size;
[object, uuid(21111111-2222-3333-4444-555555555503), dual, oleautomation]
interface IBolt : IDispatch { [id(1)] HRESULT Turn([in] Size width); };
)";

inline constexpr const char* kPartsIdl = R"(
import "types.idl";
[uuid(21111111-2222-3333-4444-555555555500), version(1.0)]
library Parts
{
    importlib("stdole2.tlb");
    [uuid(21111111-2222-3333-4444-555555555504)] coclass Bolt { [default] interface IBolt; };
}
)";

inline constexpr const char* kShopIdl = R"(
import "types.idl";
[uuid(11111111-2222-3333-4444-555555555501), version(3.7), helpstring("A shop")]
library Shop
{
    importlib("stdole2.tlb");
    importlib("parts.tlb");
    [helpstring("Kinds")] typedef enum Kind { kdCash = 1, kdNone = -1 } Kind;
    typedef enum _Secret { sc = 1 } _Secret;
    interface _Account;
    typedef struct Entry {
        long Amount; void *Extra; BSTR Names[3]; Kind Kinds[2]; _Account *Owner; Size Width;
    } Entry;
    [public] typedef _Account *AccountPointer;
    [dllname("shop.dll"), uuid(11111111-2222-3333-4444-555555555504)]
    module Tools {
        [entry(7)] long __stdcall _B_str_Mid([in] long handle, [in] Size width);
    };
    [object, uuid(11111111-2222-3333-4444-555555555505), dual, oleautomation, hidden]
    interface _Account : IDispatch {
        [id(0), propget, helpstring("The name"), helpcontext(5)]
        HRESULT Name([out, retval] BSTR *result);
        [id(0), propput] HRESULT Name([in] BSTR value);
        [id(2), propputref] HRESULT Owner([in] IUnknown *value);
        [id(-4), propget, restricted] HRESULT _NewEnum([out, retval] IUnknown **result);
        [id(3)] HRESULT Post([in] int amount, [in, defaultvalue("none")] BSTR text,
                             [in, optional] VARIANT extra,
                             [in, optional, defaultvalue(-3)] Kind kind, [in, out] long *count,
                             [out, retval] VARIANT_BOOL *ok);
        [id(4), vararg] HRESULT Sum([in, out] SAFEARRAY(VARIANT) *values);
        [id(5), hidden] HRESULT Find([in] _Account *from, [in, out] _Account **found,
                                     [in, out] AccountPointer *other, [in] Entry *entry,
                                     [in] SAFEARRAY(Kind) kinds);
        [id(6)] HRESULT Measure([in] Size width, [in] IBolt *bolt, [out, retval] Size *result);
    };
    [uuid(11111111-2222-3333-4444-555555555506)]
    dispinterface __Account {
        properties:
        methods:
            [id(1), helpstring("Was posted")] void Posted([in] long amount);
            [id(2), hidden] void Secret();
    };
    [object, uuid(11111111-2222-3333-4444-555555555507), oleautomation]
    interface _IStore : IUnknown { [id(9)] HRESULT Save([in] BSTR path); };
    [uuid(11111111-2222-3333-4444-555555555508)]
    dispinterface Board {
        properties:
            [id(10)] long Count;
            [id(11)] Size Width;
            [id(12)] long Height;
        methods:
            [id(1)] Size Broken();
    };
    [uuid(11111111-2222-3333-4444-555555555509), helpcontext(12)]
    coclass Account {
        interface _IStore;
        [default] interface _Account;
        [default, source] dispinterface __Account;
    };
    [uuid(11111111-2222-3333-4444-55555555550A), control, restricted]
    coclass Panel { [default] dispinterface Board; };
}
)";

}  // namespace vendrel::typelib::test
