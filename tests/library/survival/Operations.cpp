#include "library/survival/Operations.h"

using namespace Qt::StringLiterals;

std::span<const Operation> operations()
{
    static const Operation all[] = {
        {"import_of_a_file",
            [](TestLibrary &library, const Workplace &place) {
                library.store.importURLs({QUrl::fromLocalFile(place.material(u"two.txt"_s))});
            },
            "two.txt: "},
        {"import_of_an_archive",
            [](TestLibrary &library, const Workplace &place) {
                library.store.importQdpx(place.material(u"study.qdpx"_s));
            },
            "Import failed: "},
        {"paste",
            [](TestLibrary &library, const Workplace &) {
                library.store.addPastedDocument(u"Pasted"_s, u"text "_s.repeated(3'000));
            },
            "The document couldn't be added: "},
        {"new_code",
            [](TestLibrary &library, const Workplace &) { library.store.createCode(u"Delta"_s, u"#112233"_s); }},
        {"coding",
            [](TestLibrary &library, const Workplace &) {
                library.store.assignCode(library.code(u"Gamma"_s), library.document(u"First"_s), {5, 5});
            }},
        {"removal_of_a_coding",
            [](TestLibrary &library, const Workplace &) {
                for (const Coding &coding : library.store.codings(library.document(u"Second"_s)).mid(0, 1))
                    library.store.removeCoding(coding);
            }},
        {"nesting",
            [](TestLibrary &library, const Workplace &) {
                library.store.nestCode(library.code(u"Gamma"_s).id, library.code(u"Beta"_s).id);
            }},
        {"move_to_the_top",
            [](TestLibrary &library, const Workplace &) { library.store.moveCodeToTopLevel(library.code(u"Beta"_s)); }},
        {"memo",
            [](TestLibrary &library, const Workplace &) {
                library.store.setDocumentMemo(library.document(u"First"_s), u"a thought "_s.repeated(700));
            },
            "The memo couldn't be saved: "},
        {"merge",
            [](TestLibrary &library, const Workplace &) {
                library.store.mergeCodes(library.code(u"Alpha"_s), library.code(u"Gamma"_s));
            }},
        {"deletion_of_a_code",
            [](TestLibrary &library, const Workplace &) { library.store.deleteCode(library.code(u"Beta"_s)); }},
        {"deletion_of_a_document",
            [](TestLibrary &library, const Workplace &) { library.store.deleteDocument(library.document(u"First"_s)); },
            ""},
        {"new_name",
            [](TestLibrary &library, const Workplace &) {
                library.store.renameDocument(library.document(u"Second"_s), u"Third"_s);
            }},
        {"new_project", [](TestLibrary &library, const Workplace &) { library.store.createProject(u"Other"_s); }},
    };
    return all;
}
