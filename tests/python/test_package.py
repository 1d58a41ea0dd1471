"""The package as its users see it, held against the tool, which it runs in its own process."""

import ast
import gc
import json
import os
import shutil
import subprocess
import sys
import tempfile
import threading
import unittest
from pathlib import Path

import vendrelmodel
from vendrelmodel import _methods, _native

ROOT = Path(__file__).resolve().parents[2]
LEDGER = str(ROOT / "samples/Ledger/Ledger.vbp")
GROUP = str(ROOT / "samples/Ledger.vbg")


def dump_of(path, *options):
    code, out, told = vendrelmodel.run("dump", path, *options)
    assert code == 0, told
    return json.loads(out)


class TreeTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.project = vendrelmodel.load(LEDGER)

    def test_a_dict_is_what_the_tool_dumps(self):
        self.assertEqual(self.project.to_dict(lines=True), dump_of(LEDGER, "--lines"))
        group = vendrelmodel.load(GROUP)
        self.assertEqual(group.to_dict(), dump_of(GROUP))
        self.assertEqual([p.name for p in group.vb_projects[0].components][:2], ["frmMain", "frmLedger"])

    def assert_is(self, element, shown):
        """An element and all below it have the values that its dict shows, under both names."""
        tables = _native.classes()[type(element).__name__][1]
        for name, snake, kind, _, _ in tables:
            value = getattr(element, name)
            self.assertEqual(repr(getattr(element, snake)), repr(value), name)
            if name not in shown or kind in ("Lines",):
                continue
            if isinstance(value, vendrelmodel.Collection):
                self.assertEqual(len(value), len(shown[name]))
                for each, below in zip(value, shown[name]):
                    if isinstance(below, dict):
                        self.assert_is(each, below)
            elif isinstance(value, (str, int, list)):
                self.assertEqual(value, shown[name], name)
            if name + "Name" in shown:
                self.assertEqual(getattr(value, "name", ""), shown[name + "Name"])

    def test_attributes_are_what_a_dict_shows(self):
        self.assert_is(self.project, self.project.to_dict())

    def test_no_method_hides_a_property(self):
        for name, (_, properties) in _native.classes().items():
            for _, method, classes in _methods.METHODS:
                if name in classes or "Element" in classes:
                    self.assertNotIn(method, [p[1] for p in properties], name)

    def test_names_and_places_are_those_of_the_tool(self):
        told = [(r["QualifiedName"], r["Kind"], r["File"], r["Line"])
                for r in vendrelmodel.records("names", LEDGER)]
        self.assertEqual([(n.qualified_name, n.kind, n.element.file, n.element.line)
                          for n in self.project.names()], told)
        self.assertGreater(len(told), 300)

    def test_look_ups(self):
        project = self.project
        self.assertEqual([e.qualified_name for e in project.find("post", kind="procedure")],
                         ["Ledger~Account~Post", "Ledger~Journal~Post"])
        self.assertEqual(project.find("LEDGER~MODMAIN~MAIN")[0].line, 50)
        self.assertEqual(project.find("nothing"), [])
        account, where = project.resolve("Account", project.components["modMain"])
        self.assertEqual(account, project.components["account"])
        self.assertEqual(where.name, "tcLocalProjectModule")
        self.assertEqual(project.resolve("Nowhere")[0], None)
        modules = project.components
        self.assertEqual(modules[-1], modules[len(modules) - 1])
        self.assertEqual([m.name for m in modules[:2]], ["frmMain", "frmLedger"])
        self.assertIn("MODMAIN", modules)
        self.assertIsNone(modules.get("nowhere"))
        for collection in (project.references, project.components["frmMain"].all_vb_controls,
                           project.components["modMain"].declarations):
            for element in collection:  # by its name, whatever key it stands under
                self.assertEqual(collection[element.name.upper()].name, element.name)
        with self.assertRaises(KeyError):
            modules["nowhere"]
        with self.assertRaises(IndexError):
            modules[len(modules)]
        main = modules["modMain"].blocks["Main"]
        self.assertEqual(main.code_lines[main.first_line - 1].strip(), "Public Sub Main()")
        self.assertEqual(main.code_lines.record(0).LineType.name, "START_SUB")
        self.assertEqual({main: 1}[modules["modMain"].blocks["main"]], 1)

    def test_docstrings_and_stub(self):
        self.assertIn("BlockTypeEnum. Can be set.", vendrelmodel.Block.block_type.__doc__)
        self.assertIn("no_references", vendrelmodel.load.__doc__)
        stub = Path(_native.__file__).parent / "__init__.pyi"
        text = stub.read_text()
        classes = {n.name: n for n in ast.parse(text).body if isinstance(n, ast.ClassDef)}
        for name, (_, properties) in _native.classes().items():
            known = {f.name for f in classes[name].body if isinstance(f, ast.FunctionDef)}
            self.assertLessEqual({p[i] for p in properties for i in (0, 1)}, known)
        if shutil.which("mypy"):
            with tempfile.TemporaryDirectory() as folder:
                script = Path(folder, "use.py")
                script.write_text("import vendrelmodel\n"
                                  "b: vendrelmodel.Block = vendrelmodel.load('x').find('y')[0]\n"
                                  "b.block_type = vendrelmodel.BlockTypeEnum.btSub\n"
                                  "s: str = b.code_lines[0]\nb.name = 1\n")
                said = subprocess.run(["mypy", "--cache-dir", folder, str(script)], text=True,
                                      capture_output=True,
                                      env={**os.environ, "MYPYPATH": str(stub.parent.parent)})
            self.assertEqual(said.stdout.count("error:"), 1, said.stdout)
            self.assertIn("use.py:5: error: Incompatible types", said.stdout)


    def test_every_property_says_what_it_means(self):
        for name, (_, properties) in _native.classes().items():
            for own, snake, _, sentence, _ in properties:
                for each in (own, snake):
                    said = getattr(getattr(vendrelmodel, name), each).__doc__
                    self.assertNotEqual(said.strip(), sentence, f"{name}.{each}")


class LoaderTest(unittest.TestCase):
    """A loader in a shared library, which finds the factories of the tree in the package."""

    def setUp(self):
        folder = Path(os.environ.get("VENDRELMODEL_BUILD", ROOT / "build/debug")) / "tests"
        found = sorted(folder.glob("*vendrel_sample_loader.so"))
        if not found:
            self.skipTest("the sample's loader is not built: target vendrel_sample_loader")
        self.loader = str(found[0])
        self.custom = f"Outline.Loader={ROOT}/samples/Loader/outline.txt"

    def test_it_fills_a_project(self):
        project = vendrelmodel.load(loader=self.loader, custom=self.custom)
        names = [(c.name, [b.name for b in c.blocks if b.is_method]) for c in project.components]
        self.assertEqual(names, [("Shop.Goods", ["Add", "Find"]), ("Shop.Names", ["Find"])])
        code, out, told = vendrelmodel.run("tree", "--loader", self.loader, "--custom", self.custom)
        self.assertEqual((code, told), (0, ""))
        self.assertIn("class Shop.Names  (1 procedure)", out)

    def test_it_stands_in_place_of_a_path(self):
        for arguments, options in (((LEDGER,), {"custom": self.custom}), ((), {})):
            with self.assertRaisesRegex(TypeError, "either a path, or custom="):
                vendrelmodel.load(*arguments, **options)
        with self.assertRaisesRegex(vendrelmodel.InputError, "has no loader No.Such"):
            vendrelmodel.load(loader=self.loader, custom="No.Such=x")


class LifeTest(unittest.TestCase):
    def test_an_element_keeps_its_tree_alive(self):
        block = vendrelmodel.load(LEDGER).components["modMain"].blocks["Main"]
        gc.collect()
        self.assertEqual(block.vb_project.project_name, "Ledger")
        self.assertEqual(block.component.blocks["main"], block)

    def test_an_element_that_left_its_tree_says_so(self):
        project = vendrelmodel.load(LEDGER)
        blocks = project.components["modMain"].blocks
        count, block = len(blocks), blocks["WriteLog"]
        blocks.remove(block)
        self.assertEqual(len(blocks), count - 1)
        self.assertNotIn(block, blocks)
        with self.assertRaisesRegex(ReferenceError, "left its tree"):
            block.name
        self.assertEqual(repr(block), "<Block, gone>")

    def test_two_threads_load_at_once_and_read_one_tree(self):
        shared = vendrelmodel.load(LEDGER)
        together = threading.Barrier(2, timeout=60)
        found, failed = [], []

        def work():
            try:
                met = []

                def progress(done, all):
                    if done == all and not met:
                        met.append(together.wait())  # both are inside of load()

                own = vendrelmodel.load(LEDGER, progress=progress)
                for _ in range(20):
                    found.append([(n.qualified_name, n.element.line)
                                  for tree in (own, shared) for n in tree.names()])
            except BaseException as error:
                failed.append(error)

        threads = [threading.Thread(target=work) for _ in range(2)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(failed, [])
        self.assertEqual(len(found), 40)
        self.assertTrue(all(each == found[0] for each in found))


class FailureTest(unittest.TestCase):
    def test_options_and_inputs(self):
        with self.assertRaisesRegex(TypeError, "no option 'readings'; there are reading"):
            vendrelmodel.load(LEDGER, readings="classic")
        with self.assertRaisesRegex(vendrelmodel.UsageError, "classic"):
            vendrelmodel.load(LEDGER, reading="clasic")
        with self.assertRaisesRegex(vendrelmodel.InputError, "no such file"):
            vendrelmodel.load(ROOT / "none.vbp")
        with self.assertRaisesRegex(vendrelmodel.UsageError, "folder of projects"):
            vendrelmodel.load(ROOT / "samples")
        self.assertEqual([Path(p).name for p in vendrelmodel.projects(ROOT / "samples/Ledger")],
                         ["Ledger.vbp"])
        classic = vendrelmodel.load(LEDGER, reading="classic", set={"LoadBlocksOnly": True})
        self.assertEqual(len(classic.find("Main")[0].parameters), 0)

    def test_a_failure_has_its_contexts(self):
        with tempfile.TemporaryDirectory() as folder:
            broken = Path(folder, "Broken.vbproj")
            broken.write_text("<VisualStudioProject><VisualBasic><Files><Include><File/></Include>"
                              "</Files></VisualBasic></VisualStudioProject>")
            with self.assertRaises(vendrelmodel.InputError) as caught:
                vendrelmodel.load(broken)
        self.assertGreater(len(caught.exception.contexts), 0)
        self.assertTrue(caught.exception.contexts[0].procedure)
        self.assertGreater(caught.exception.number, 0)
        self.assertTrue(caught.exception.raised_in.endswith(".cpp"))

    def test_diagnostics_are_records(self):
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder, "Shop.vbp")
            path.write_text("Type=Exe\nModule=modGone; modGone.bas\n")
            told, = vendrelmodel.load(path).diagnostics
        self.assertEqual((told.code, told.severity, Path(told.file).name, told.line),
                         ("missing-module", "warning", "Shop.vbp", 2))

    def test_what_progress_raises_stops_the_load(self):
        def progress(done, all):
            raise KeyError("enough")

        with self.assertRaisesRegex(KeyError, "enough"):
            vendrelmodel.load(LEDGER, progress=progress)


class EditTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        shutil.copytree(ROOT / "samples", self.folder.name, dirs_exist_ok=True)
        self.path = Path(self.folder.name, "Ledger/Ledger.vbp")

    def test_properties(self):
        block = vendrelmodel.load(self.path).find("FormatAmount")[0]
        block.TaggedDescription = "Amount as text, £"
        block.block_type = vendrelmodel.BlockTypeEnum.btSub
        self.assertEqual((block.tagged_description, block.BlockType), ("Amount as text, £", 1))
        with self.assertRaises(TypeError):
            block.vb_project.related_documents = "one text"
        for name, value, error in [("block_type", 77, ValueError), ("block_type", "x", TypeError),
                                   ("is_friend", 1, TypeError), ("access", None, TypeError),
                                   ("event_source", block.vb_project.project_name, TypeError),
                                   ("qualified_name", "x", AttributeError),
                                   ("nonsense", 1, AttributeError)]:
            with self.assertRaises(error, msg=name):
                setattr(block, name, value)

    def test_a_dict_follows_what_was_changed(self):
        project = vendrelmodel.load(LEDGER)
        module = project.components["modMain"]
        before = module.to_dict()
        block = next(b for b in module.blocks if b.is_method)
        block.name = "Renamed"
        after = module.to_dict()
        shown = {b["UniqueName"] for b in after["Blocks"]} - {b["UniqueName"] for b in before["Blocks"]}
        self.assertEqual(shown, {"Ledger~modMain~Renamed"})

    def test_lines_modules_and_writing(self):
        project = vendrelmodel.load(self.path)
        before = {p.name: p.read_bytes() for p in self.path.parent.iterdir() if p.is_file()}
        lines = project.components["modMain"].blocks["Main"].code_lines
        lines[0] = lines[0] + " ' amended"
        lines.insert(1, "    Dim Added As Long")
        added = project.new_module("modAdded")
        added.add_code("Public Function Twice(ByVal V As Long) As Long\nTwice = 2 * V\nEnd Function")
        self.assertEqual(added.blocks["Twice"].parameters[0].name, "V")
        target = Path(self.folder.name, "copy")
        self.assertIn("+Public Sub Main() ' amended", project.write(target, dry_run=True))
        self.assertFalse(target.exists())
        project.write(target)
        after = {p.name: p.read_bytes() for p in target.iterdir()}
        same = [name for name in before if after.get(name) == before[name]]
        self.assertEqual(sorted(set(before) - set(same)), ["Ledger.vbp", "modMain.bas"])
        again = vendrelmodel.load(target / "Ledger.vbp")
        self.assertIn("Added", [v.name for v in again.find("Main")[0].variables])
        changes = vendrelmodel.load(self.path).diff(again, paths=False)
        self.assertIn(("added", "module", "Ledger~modAdded"),
                      [(c.change, c.kind, c.element) for c in changes])
        with self.assertRaisesRegex(vendrelmodel.UsageError, "in-place"):
            project.write(self.path.parent)
        project.write()
        self.assertTrue((self.path.parent / "SourceBackup/modMain.bas").exists())


class ExamplesTest(unittest.TestCase):
    def example(self, name, *arguments):
        done = subprocess.run([sys.executable, str(ROOT / "samples/python" / name), *arguments],
                              capture_output=True, text=True)
        self.assertEqual(done.returncode, 0, done.stderr)
        return done.stdout.splitlines()

    def test_inventory(self):
        rows = self.example("inventory.py", LEDGER)
        self.assertEqual(rows[0].split(), ["project", "module", "kind", "lines", "procedures",
                                           "declarations"])
        self.assertEqual(len(rows), 12)
        self.assertEqual([r.split()[4] for r in rows if " modMain " in r], ["8"])

    def test_undescribed(self):
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder, "modPlain.bas")
            path.write_text("Attribute VB_Name = \"modPlain\"\n'##SUMMARY Told.\nPublic Function A()\n"
                            "End Function\n\nPublic Function B()\nEnd Function\n"
                            "Private Function C()\nEnd Function\n")
            self.assertEqual(self.example("undescribed.py", str(path)),
                             [f"{path}:6: modPlain~modPlain~B"])

    def test_rename(self):
        with tempfile.TemporaryDirectory() as folder:
            said = self.example("rename.py", LEDGER, "modMain~WriteLog", "Note", folder)
            self.assertIn('+ Note LineCount & " lines: " & Entry.Narrative', said)
            again = vendrelmodel.load(Path(folder, "Ledger.vbp"))
            self.assertEqual(len(again.find("Note", kind="procedure")), 1)
            self.assertEqual(again.find("WriteLog"), [])


if __name__ == "__main__":
    unittest.main()
