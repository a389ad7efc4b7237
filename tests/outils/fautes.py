#!/usr/bin/env python3
"""Plants faults, one at a time, and tells which ones the tests catch.

    tests/outils/fautes.py [--arbre DIR] [--construit DIR] [-j N] [WORD...]

The faults stand in fautes.txt; with words only those whose title holds one of them. They are planted in
a copy of the tree (build/fautes/arbre), never in the tree itself. Ends with 1 when a fault was not caught.
"""
import argparse
import shutil
import subprocess
import sys
from pathlib import Path

RACINE = Path(__file__).resolve().parents[2]


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
    """Brings the sources to the copy; a file that did not change keeps its time there."""
    noms = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=RACINE, check=True, text=True,
                          capture_output=True).stdout.splitlines()
    for nom in noms:
        de, vers = RACINE / nom, arbre / nom
        if de.is_file() and (not vers.exists() or vers.read_bytes() != de.read_bytes()):
            vers.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(de, vers)


def change(arbre, changes):
    """Replaces each line, which must stand once in its file. What the files held, or a complaint."""
    avant = {}
    for nom, ligne, autre in changes:
        chemin = arbre / nom
        contenu = chemin.read_text(encoding="utf-8")
        avant.setdefault(chemin, contenu)
        trouvees = [entiere for entiere in contenu.splitlines() if entiere.strip() == ligne]
        if len(trouvees) != 1:
            remet(avant)
            return None, f"{len(trouvees)} lines \"{ligne}\" in {nom}"
        chemin.write_text(contenu.replace(trouvees[0] + "\n", trouvees[0].replace(ligne, autre) + "\n"),
                          encoding="utf-8")
    return avant, ""


def remet(avant):
    for chemin, contenu in avant.items():
        chemin.write_text(contenu, encoding="utf-8")


def lance(commande, **options):
    nulle = subprocess.DEVNULL
    return subprocess.run(commande, stdout=nulle, stderr=nulle, **options).returncode


def passent(construit, tests):
    """Runs tests until one fails. A test that hangs has failed, too."""
    for binaire, filtre in tests:
        try:
            commande = [construit / "bin" / binaire, "--gtest_filter=" + filtre, "--gtest_fail_fast"]
            if lance(commande, timeout=1200):
                return False
        except subprocess.TimeoutExpired:
            return False
    return True


def main():
    lecteur = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    lecteur.add_argument("--arbre", type=Path, default=RACINE / "build/fautes/arbre", help="the copy")
    lecteur.add_argument("--construit", type=Path, default=RACINE / "build/fautes/dev", help="its build")
    lecteur.add_argument("-j", default="2", help="jobs of the build")
    lecteur.add_argument("mots", nargs="*")
    options = lecteur.parse_args()
    fautes = [f for f in lit_fautes(Path(__file__).with_suffix(".txt"))
              if not options.mots or any(mot in f["titre"] for mot in options.mots)]
    tests = sorted({t for f in fautes for t in f["tests"]})
    binaires = sorted({binaire for binaire, _ in tests})
    construit = ["cmake", "--build", options.construit, "-j", options.j, "--target"]

    copie(options.arbre)
    if not (options.construit / "CMakeCache.txt").exists() and lance(
            ["cmake", "-S", options.arbre, "-B", options.construit, "-G", "Ninja",
             "-DCMAKE_BUILD_TYPE=RelWithDebInfo"]):
        sys.exit("the copy cannot be configured")
    if lance([*construit, *binaires]) or not passent(options.construit, tests):
        sys.exit("without any fault the tests must build and pass")

    prises, douteuses = 0, 0
    for faute in fautes:
        avant, plainte = change(options.arbre, faute["changes"])
        if not plainte:
            try:
                if lance([*construit, *sorted({binaire for binaire, _ in faute["tests"]})]):
                    plainte = "it does not build"
                else:
                    prise = not passent(options.construit, faute["tests"])
            finally:
                remet(avant)
        if plainte:
            douteuses += 1
            print(f"no fault     {faute['titre']}: {plainte}", flush=True)
            continue
        prises += prise
        print(f"{'caught      ' if prise else 'NOT CAUGHT  '} {faute['titre']}", flush=True)
    print(f"{prises} of {len(fautes)} caught")
    sys.exit(0 if prises == len(fautes) and not douteuses else 1)


if __name__ == "__main__":
    main()
