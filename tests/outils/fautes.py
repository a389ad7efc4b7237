#!/usr/bin/env python3
"""Plants faults, one at a time, and tells which ones the tests catch.

    tests/outils/fautes.py [--arbre DIR] [-j N] [--texte] [--seuls] [WORD...]

The faults stand in fautes.txt; with words only those whose title holds one of them. They are planted in a copy of
the tree (a directory of this user below the temporary one, kept for the next run), built with the preset "rapide",
never in the tree itself. The tests that a fault names run first; when they pass, the whole suite runs until a test
fails, unless --seuls leaves it at that. --texte only looks whether every fault still finds its lines. Ends with 1 when a fault was not caught, or was
none: its line is gone, or what stands there instead does not build.
"""
import argparse
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

RACINE = Path(__file__).resolve().parents[2]
DELAI = 300  # seconds: a test that hangs has seen the fault


def lit_fautes(chemin):
    """Blocks: title, then "file", "- line", "+ replacement", "> test binary [filter]"."""
    fautes = []
    for ligne in chemin.read_text(encoding="utf-8").splitlines():
        texte = ligne.strip()
        if not texte or texte.startswith("#"):
            continue
        if not ligne.startswith(" "):
            fautes.append({"titre": texte, "changes": [], "tests": []})
        elif texte.startswith("- "):
            fautes[-1]["changes"].append([fautes[-1]["fichier"], texte[2:], ""])
        elif texte.startswith("+ "):
            fautes[-1]["changes"][-1][2] = texte[2:]
        elif texte.startswith("> "):
            fautes[-1]["tests"].append(tuple((texte[2:] + " *").split()[:2]))
        else:
            fautes[-1]["fichier"] = texte
    return fautes


def copie(arbre):
    """Makes the copy what the tree is; a file that did not change keeps its time there."""
    if (arbre / ".git").exists():
        sys.exit(f"{arbre} is a working tree: what git does not list would be deleted there")
    noms = {nom for nom in subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=RACINE, check=True,
                                          text=True, capture_output=True).stdout.splitlines()
            if (RACINE / nom).is_file()}
    for nom in noms:
        de, vers = RACINE / nom, arbre / nom
        if not vers.exists() or vers.read_bytes() != de.read_bytes():
            vers.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(de, vers)
    for vers in [v for v in arbre.rglob("*") if v.is_file()]:
        nom = vers.relative_to(arbre)
        if nom.parts[0] != "build" and str(nom) not in noms:
            vers.unlink()


def change(arbre, changes):
    """Replaces each line, which must stand once in its file. What the files held, and a complaint."""
    avant = {}
    for nom, ligne, autre in changes:
        chemin = arbre / nom
        contenu = chemin.read_text(encoding="utf-8") if chemin.exists() else ""
        trouvees = [entiere for entiere in contenu.splitlines() if entiere.strip() == ligne]
        if len(trouvees) != 1:
            remet(avant)
            return {}, f"{len(trouvees)} lines \"{ligne}\" in {nom}"
        avant.setdefault(chemin, contenu)
        chemin.write_text(contenu.replace(trouvees[0] + "\n", trouvees[0].replace(ligne, autre) + "\n"),
                          encoding="utf-8")
    return avant, ""


def remet(avant):
    for chemin, contenu in avant.items():
        chemin.write_text(contenu, encoding="utf-8")


class Copie:
    """The copy, its build and its tests."""

    def __init__(self, arbre, taches):
        self.arbre, self.taches = arbre, taches

    def lance(self, *commande, delai=None):
        """The status and what was written; 1 when it took too long."""
        try:
            fait = subprocess.run(commande, cwd=self.arbre, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                  timeout=delai, env={**os.environ, "QT_QPA_PLATFORM": "offscreen"})
            return fait.returncode, fait.stdout.decode(errors="replace")
        except subprocess.TimeoutExpired:
            return 1, "[  FAILED  ] (too long)"

    def construit(self, *cibles):
        """Builds; what the compiler complained about."""
        etat, dit = self.lance("cmake", "--build", "build/rapide", "-j", self.taches,
                               *(("--target", *cibles) if cibles else ()))
        plainte = next((ligne for ligne in dit.splitlines() if "error" in ligne or "FAILED" in ligne), "unknown")
        return "it does not build: " + plainte if etat else ""

    def echoues(self, tests):
        """The tests that failed, of the first of these binaries in which one did."""
        for binaire, filtre in tests:
            etat, dit = self.lance(f"build/rapide/bin/{binaire}", "--gtest_filter=" + filtre, "--gtest_brief=1",
                                   delai=DELAI)
            if etat:
                vus = re.findall(r"^\[  FAILED  \] ([^\n,]*?)(?:,| \(|$)", dit, re.M)
                return sorted(set(vus)) or [f"{binaire} stopped"]
        return []

    def premier_echec(self):
        """The first test of the whole suite that fails, or nothing."""
        plainte = self.construit()
        if plainte:
            return plainte
        etat, dit = self.lance("ctest", "--preset", "rapide", "-j", self.taches, "--stop-on-failure")
        return next((l.split("***")[0] for l in dit.splitlines() if "***" in l), "?") if etat else ""


def plante(copie_, faute, seuls):
    """What became of a fault: its word and who saw it."""
    avant, plainte = change(copie_.arbre, faute["changes"])
    if plainte:
        return "NO FAULT", plainte
    try:
        plainte = copie_.construit(*sorted({binaire for binaire, _ in faute["tests"]}))
        if plainte:
            return "NO FAULT", plainte
        noms = copie_.echoues(faute["tests"])
        if noms:
            return "caught", f"{len(noms)}: {', '.join(noms[:3])}"
        ailleurs = "" if seuls else copie_.premier_echec()
        return ("elsewhere", ailleurs) if ailleurs else ("NOT CAUGHT", "")
    finally:
        remet(avant)


def main():
    lecteur = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    lecteur.add_argument("--arbre", type=Path, help="the copy",
                         default=Path(tempfile.gettempdir()) / f"fenlor-fautes-{os.getuid()}")
    lecteur.add_argument("-j", default="2", help="jobs of the build and of the suite")
    lecteur.add_argument("--texte", action="store_true", help="only look for the lines")
    lecteur.add_argument("--seuls", action="store_true", help="run no other tests than those that a fault names")
    lecteur.add_argument("mots", nargs="*")
    options = lecteur.parse_args()
    fautes = [f for f in lit_fautes(Path(__file__).with_suffix(".txt"))
              if not options.mots or any(mot in f["titre"] for mot in options.mots)]

    options.arbre.mkdir(parents=True, exist_ok=True)
    copie(options.arbre)
    comptes = {"caught": 0, "elsewhere": 0, "NOT CAUGHT": 0, "NO FAULT": 0}
    if options.texte:
        for faute in fautes:
            avant, plainte = change(options.arbre, faute["changes"])
            remet(avant)
            if plainte:
                comptes["NO FAULT"] += 1
                print(f"{faute['titre']}: {plainte}")
        sys.exit(1 if comptes["NO FAULT"] else 0)

    la_copie = Copie(options.arbre, options.j)
    etat, dit = la_copie.lance("cmake", "--preset", "rapide")
    if etat:
        sys.exit(dit)
    tests = sorted({t for f in fautes for t in f["tests"]})
    plainte = la_copie.construit(*sorted({binaire for binaire, _ in tests})) or ", ".join(la_copie.echoues(tests))
    if plainte:
        sys.exit("without any fault: " + plainte)
    for faute in fautes:
        debut = time.monotonic()
        mot, detail = plante(la_copie, faute, options.seuls)
        comptes[mot] += 1
        print(f"{mot:<11} {faute['titre']} ({time.monotonic() - debut:.0f} s) {detail}", flush=True)
    print(f"{comptes['caught'] + comptes['elsewhere']} of {len(fautes)} caught")
    sys.exit(1 if comptes["NOT CAUGHT"] or comptes["NO FAULT"] else 0)


if __name__ == "__main__":
    main()
