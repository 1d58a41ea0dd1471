#pragma once
// A library of its own that has every kind of entry and of member.

namespace vendrel::typelib::test {

inline constexpr const char* kLedgerIdl = R"(
[uuid(11111111-2222-3333-4444-555555555501), version(3.7), helpstring("Test library"),
 helpcontext(0x10), lcid(0x409), helpfile("Ledger.hlp"), hidden]
library LedgerLib
{
    importlib("stdole2.tlb");
    [uuid(11111111-2222-3333-4444-555555555502), helpstring("Kinds of account")]
    typedef enum AccountKind { akCash = 1, akBank = 500000000, akNone = -1 } AccountKind;
    typedef struct Entry { long Amount; BSTR Text; double Rates[3][4]; AccountKind Kind; } Entry;
    typedef union Either { long Whole; double Real; } Either;
    [public] typedef Entry EntryAlias;
    [dllname("ledger.dll"), uuid(11111111-2222-3333-4444-555555555504)]
    module Tools {
        [entry(7), helpstring("Closes")] void __stdcall CloseLedger([in] long handle);
    };
    [object, uuid(11111111-2222-3333-4444-555555555505), dual, oleautomation, hidden,
     helpstring("A \"ledger\""), helpcontext(77)]
    interface _Ledger : IDispatch {
        [id(0), propget, helpstring("The name"), helpcontext(5)]
        HRESULT Name([out, retval] BSTR *result);
        [id(0), propput] HRESULT Name([in] BSTR value);
        [id(2), propputref] HRESULT Owner([in] IDispatch *value);
        [id(-4), propget, restricted] HRESULT _NewEnum([out, retval] IUnknown **result);
        [id(3)] HRESULT Post([in] long amount, [in, defaultvalue("none")] BSTR text,
                             [in, optional] VARIANT extra,
                             [in, optional, defaultvalue(-3)] AccountKind kind,
                             [out, retval] VARIANT_BOOL *ok);
        [id(4), vararg] HRESULT Sum([in, out] SAFEARRAY(VARIANT) *values,
                                    [out, retval] double *result);
        [id(5), hidden] HRESULT Find([in] long number, [lcid] long lcid,
                                     [out, retval] _Ledger **found);
        [id(6)] HRESULT Fill([in, out] EntryAlias *entry, [in] SAFEARRAY(BSTR) names);
    };
    [uuid(11111111-2222-3333-4444-555555555506)]
    dispinterface __Ledger {
        properties:
            [id(10), readonly] long Count;
        methods:
            [id(1), helpstring("Was posted")] void Posted([in] long amount);
    };
    [object, uuid(11111111-2222-3333-4444-555555555507), oleautomation]
    interface IStore : IUnknown { HRESULT Save([in] BSTR path); };
    [object, uuid(11111111-2222-3333-4444-555555555508), oleautomation]
    interface IStore2 : IStore { HRESULT Flush(void); };
    [uuid(11111111-2222-3333-4444-555555555509)]
    dispinterface StoreView { interface IStore2; };
    [uuid(11111111-2222-3333-4444-55555555550A), helpstring("The ledger"), noncreatable]
    coclass Ledger {
        interface IStore;
        [default] interface _Ledger;
        [default, source] dispinterface __Ledger;
    };
}
)";

}  // namespace vendrel::typelib::test
