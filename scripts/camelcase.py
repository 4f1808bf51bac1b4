#!/usr/bin/python3
"""Helper of camelcase.sh: decides which of clang-tidy's renames are safe.

  camelcase.py filter ROOT BUILD FIXES OUT

FIXES is the file of fixes that clang-tidy's readability-identifier-naming
check exported for every translation unit. This parses the same translation
units with libclang and drops the rename of a function or method whose new
name would mean something else somewhere:
  - a method whose new name is already a member (field, method, type,
    enumerator) of its class, of a base class (Qt's too) or of a class derived
    from it, or which a method of one of those classes calls unqualified and
    finds outside the class;
  - a free function whose new name is already declared in its namespace, an
    enclosing one, the global namespace or std;
  - a function with C linkage, one that Qt's meta-object system calls by
    name (slots, Q_INVOKABLE, SLOT()/SIGNAL()/invokeMethod texts, Q_PROPERTY
    accessors) and one named in the body of a macro;
  - one called where clang cannot resolve it (in a template);
  - any function whose new name is a local variable or parameter, or a member
    of the class, where it is called unqualified.
It writes the fixes that remain to OUT (for clang-apply-replacements) and
prints what it dropped and why, and the names that stay as they are.
"""

import collections
import ctypes
import json
import multiprocessing
import os
import re
import sys

import clang.cindex as ci
import yaml

CK = ci.CursorKind
FUNCTION_KINDS = {CK.FUNCTION_DECL, CK.CXX_METHOD, CK.FUNCTION_TEMPLATE}
BODY_KINDS = FUNCTION_KINDS | {CK.CONSTRUCTOR, CK.DESTRUCTOR, CK.CONVERSION_FUNCTION}
CLASS_KINDS = {CK.CLASS_DECL, CK.STRUCT_DECL, CK.UNION_DECL, CK.CLASS_TEMPLATE,
               CK.CLASS_TEMPLATE_PARTIAL_SPECIALIZATION}
MEMBER_KINDS = {CK.FIELD_DECL, CK.VAR_DECL, CK.CXX_METHOD, CK.FUNCTION_TEMPLATE,
                CK.TYPEDEF_DECL, CK.TYPE_ALIAS_DECL, CK.TYPE_ALIAS_TEMPLATE_DECL,
                CK.USING_DECLARATION, CK.ENUM_DECL} | CLASS_KINDS
NAMESPACE_MEMBER_KINDS = {CK.FUNCTION_DECL, CK.FUNCTION_TEMPLATE, CK.VAR_DECL,
                          CK.TYPEDEF_DECL, CK.TYPE_ALIAS_DECL, CK.TYPE_ALIAS_TEMPLATE_DECL,
                          CK.USING_DECLARATION, CK.ENUM_DECL, CK.NAMESPACE,
                          CK.NAMESPACE_ALIAS} | CLASS_KINDS
CAMEL_BACK = re.compile(r'^[a-z][a-zA-Z0-9]*$')
REF_KINDS = {CK.DECL_REF_EXPR, CK.MEMBER_REF_EXPR, CK.OVERLOADED_DECL_REF}

ROOT = BUILD = None
RENAMES = {}  # old name -> new name
NEW_NAMES = set()
OLD_NAMES = {}  # new name -> old names


def setup(root, build, renames):
    global ROOT, BUILD, RENAMES, NEW_NAMES
    ROOT, BUILD, RENAMES = root, build, renames
    NEW_NAMES = set(renames.values())
    OLD_NAMES.clear()
    for o, n in renames.items():
        OLD_NAMES.setdefault(n, []).append(o)
    lib = ci.conf.lib
    lib.clang_getOverriddenCursors.argtypes = [
        ci.Cursor, ctypes.POINTER(ctypes.POINTER(ci.Cursor)), ctypes.POINTER(ctypes.c_uint)]
    lib.clang_getOverriddenCursors.restype = None
    lib.clang_disposeOverriddenCursors.argtypes = [ctypes.POINTER(ci.Cursor)]
    lib.clang_disposeOverriddenCursors.restype = None


def overridden(c):
    lib = ci.conf.lib
    p = ctypes.POINTER(ci.Cursor)()
    n = ctypes.c_uint()
    lib.clang_getOverriddenCursors(c, ctypes.byref(p), ctypes.byref(n))
    out = []
    for i in range(n.value):
        o = ci.Cursor.from_buffer_copy(p[i])
        o._tu = c._tu
        out.append(o)
    if n.value:
        lib.clang_disposeOverriddenCursors(p)
    return out


_real = {}


def real(path):
    """One spelling for each file: clang names a header as it was included
    (src/print/../store/piperow.h)."""
    r = _real.get(path)
    if r is None:
        r = _real[path] = os.path.realpath(path) if path else path
    return r


def loc_key(c):
    loc = c.location
    return (real(loc.file.name) if loc.file else '', loc.offset)


_project = {}


def in_project(c):
    f = c.location.file
    if f is None:
        return False
    name = f.name
    r = _project.get(name)
    if r is None:
        p = os.path.realpath(name)
        r = p.startswith(ROOT + '/') and not p.startswith(BUILD + '/')
        _project[name] = r
    return r


def root_decl(c):
    """The declaration clang-tidy reports a rename at: the first declaration of
    the method that the given one overrides, or of the function itself."""
    seen = set()
    while c.kind == CK.CXX_METHOD:
        over = overridden(c)
        if not over or c.get_usr() in seen:
            break
        seen.add(c.get_usr())
        c = over[0]
    return c.canonical


def scope_usrs(c):
    """The namespaces around a declaration, innermost first, the global one
    last. An anonymous or inline namespace shares the names of the one around
    it, so it is left out."""
    out = []
    p = c.semantic_parent
    while p is not None and p.kind != CK.TRANSLATION_UNIT:
        if p.kind == CK.NAMESPACE and p.spelling and not is_inline_namespace(p):
            out.append(p.get_usr())
        p = p.semantic_parent
    out.append('')
    return out


def is_inline_namespace(c):
    # std's inline namespaces (__cxx11, __8); the project has none.
    return c.spelling.startswith('__')


def enclosing_class(c):
    p = c.semantic_parent
    while p is not None and p.kind not in CLASS_KINDS and p.kind != CK.TRANSLATION_UNIT:
        p = p.semantic_parent
    return p if p is not None and p.kind in CLASS_KINDS else None


class Unit:
    def __init__(self):
        self.entities = {}   # key -> dict
        self.classes = {}    # usr -> dict(name, names, bases, project)
        self.nsnames = collections.defaultdict(dict)  # namespace usr -> name -> place
        self.clashes = {}    # key -> reason, found in this unit
        self.uses = []       # (key, scopes, class usr, local clash)
        self.outer = set()   # (class usr, name): unqualified use of a non-member
        self.unresolved = set()  # (old name, place)
        self.unflagged = set()  # (name, place): not camelBack, not renamed

    def class_info(self, c):
        d = c.get_definition()
        if d is not None:
            c = d
        usr = c.get_usr()
        if not usr or usr in self.classes:
            return usr
        info = {'name': c.spelling, 'names': [], 'bases': [], 'project': in_project(c)}
        self.classes[usr] = info
        names = set()
        for ch in c.get_children():
            k = ch.kind
            if k == CK.CXX_BASE_SPECIFIER:
                decl = ch.type.get_declaration()
                if decl is not None and decl.kind != CK.NO_DECL_FOUND:
                    if decl.kind not in CLASS_KINDS:
                        decl = ch.referenced or decl
                    if decl is not None and decl.kind in CLASS_KINDS | {CK.CLASS_DECL}:
                        info['bases'].append(self.class_info(decl))
            elif k in MEMBER_KINDS:
                if ch.spelling:
                    names.add(ch.spelling)
                if k == CK.ENUM_DECL:
                    names.update(e.spelling for e in ch.get_children()
                                 if e.kind == CK.ENUM_CONSTANT_DECL)
        info['names'] = sorted(names)
        return usr

    def namespace_names(self, c, usr):
        """Names declared directly in a namespace (top-level walk, cheap)."""
        for ch in c.get_children():
            k = ch.kind
            if k == CK.NAMESPACE:
                inner = usr if (not ch.spelling or is_inline_namespace(ch)) else ch.get_usr()
                if ch.spelling:
                    self.nsnames[usr].setdefault(ch.spelling, ch)
                self.namespace_names(ch, inner)
            elif k == CK.LINKAGE_SPEC or k == CK.UNEXPOSED_DECL:
                self.namespace_names(ch, usr)
            elif k in NAMESPACE_MEMBER_KINDS:
                if ch.spelling:
                    self.nsnames[usr].setdefault(ch.spelling, ch)
                if k == CK.ENUM_DECL:
                    for e in ch.get_children():
                        if e.kind == CK.ENUM_CONSTANT_DECL:
                            self.nsnames[usr].setdefault(e.spelling, e)

    def namespace_clashes(self):
        """A free function whose new name is declared in its namespace, an
        enclosing one or std, as this unit sees them; or where it is called
        unqualified."""
        def clash(scopes, old, new):
            for s in scopes + ['c:@N@std']:
                for n in [new] + OLD_NAMES.get(new, []):
                    if n == old:
                        continue
                    c = self.nsnames.get(s, {}).get(n)
                    if c is not None:
                        return "'%s' is already declared (%s)" % (new, place(c))
            return None
        for key, e in self.entities.items():
            if not e['method']:
                why = clash(e['scopes'], e['old'], e['new'])
                if why:
                    self.clashes.setdefault(key, why)
        for key, scopes, _, _, where in self.uses:
            e = self.entities[key]
            if not e['method'] and key not in self.clashes:
                why = clash(scopes, e['old'], e['new'])
                if why:
                    self.clashes[key] = why + ', where it is called (%s)' % where

    def entity(self, c):
        old = c.spelling
        new = RENAMES.get(old)
        if new is None:
            return None
        r = root_decl(c)
        key = loc_key(r)
        e = self.entities.get(key)
        if e is None:
            parent = c.semantic_parent
            cls = parent if parent is not None and parent.kind in CLASS_KINDS else None
            is_method = cls is not None
            mangled = ''
            if c.kind == CK.FUNCTION_DECL and not is_method:
                try:
                    mangled = c.mangled_name or ''
                except Exception:
                    mangled = ''
            e = {'old': old, 'new': new, 'method': is_method,
                 'class': self.class_info(cls) if is_method and cls is not None else None,
                 'scopes': scope_usrs(c),
                 'clinkage': bool(mangled) and not mangled.startswith('_Z'),
                 'place': place(r), 'locs': set()}
            self.entities[key] = e
        e['locs'].add(loc_key(c))
        if e['method']:
            # An override of another class renames with the one it overrides:
            # each class it lives in takes part in the check.
            cls = enclosing_class(c)
            if cls is not None:
                e.setdefault('classes', set()).add(self.class_info(cls))
        return key

    def walk(self, c, ctx):
        slots = False
        for ch in c.get_children():
            if ch.kind == CK.CXX_ACCESS_SPEC_DECL and c.kind in CLASS_KINDS:
                toks = {t.spelling for t in ch.get_tokens()}
                slots = bool(toks & {'slots', 'Q_SLOTS'})
            if slots and ch.kind in FUNCTION_KINDS and ch.spelling in RENAMES:
                key = self.entity(ch)
                if key is not None:
                    self.entities[key]['slot'] = True
            if not in_project(ch):
                continue
            k = ch.kind
            if k in FUNCTION_KINDS and ch.spelling in RENAMES:
                self.entity(ch)
            elif k in FUNCTION_KINDS and not CAMEL_BACK.match(ch.spelling) and \
                    not ch.spelling.startswith(('operator', 'qt_', 'qInitResources',
                                                'qCleanupResources')) and \
                    ch.spelling != 'main':
                self.unflagged.add((ch.spelling, place(ch)))
            if k in CLASS_KINDS:
                self.class_info(ch)
            if k in REF_KINDS:
                self.reference(ch, ctx)
            elif k == CK.CALL_EXPR and ch.spelling in RENAMES and ch.referenced is None:
                self.unresolved.add((ch.spelling, place(ch)))
            if k in BODY_KINDS and ch.is_definition():
                cls = enclosing_class(ch)
                inner = {'locals': local_names(ch),
                         'class': self.class_info(cls) if cls is not None else None,
                         'scopes': scope_usrs(ch)}
                self.walk(ch, inner)
            elif k == CK.LAMBDA_EXPR and ctx is not None:
                inner = dict(ctx)
                inner['locals'] = ctx['locals'] | local_names(ch)
                self.walk(ch, inner)
            else:
                self.walk(ch, ctx)

    def reference(self, ch, ctx):
        name = ch.spelling
        ref = ch.referenced
        unqualified = ch.extent.start.offset == ch.location.offset
        if name in RENAMES:
            if ref is None or ref.kind == CK.OVERLOADED_DECL_REF:
                self.unresolved.add((name, place(ch)))
            elif ref.kind in FUNCTION_KINDS and ref.spelling == name:
                key = self.entity(ref)
                if key is not None and unqualified and ctx is not None:
                    new = RENAMES[name]
                    self.uses.append((key, ctx['scopes'], ctx['class'],
                                      new in ctx['locals'], place(ch)))
        if name in NEW_NAMES and unqualified and ctx is not None and ctx['class'] and \
                ref is not None and is_outer(ref):
            # A method calls something outside its class by this name: a
            # member of the same name would take its place.
            self.outer.add((ctx['class'], name))


def is_outer(ref):
    if ref.kind == CK.PARM_DECL:
        return False
    parent = ref.semantic_parent
    if ref.kind == CK.VAR_DECL:
        return parent is not None and parent.kind in (CK.NAMESPACE, CK.TRANSLATION_UNIT)
    return enclosing_class(ref) is None


def local_names(fn):
    names = set()
    stack = [fn]
    while stack:
        c = stack.pop()
        for ch in c.get_children():
            if ch.kind in (CK.VAR_DECL, CK.PARM_DECL) and ch.spelling:
                names.add(ch.spelling)
            stack.append(ch)
    return names


def place(c):
    loc = c.location
    f = os.path.relpath(real(loc.file.name), ROOT) if loc.file else '?'
    return '%s:%d' % (f, loc.line)


def parse_unit(job):
    path, args, directory = job
    index = ci.Index.create()
    cwd = os.getcwd()
    os.chdir(directory)
    try:
        tu = index.parse(path, args=args)
    finally:
        os.chdir(cwd)
    errors = [str(d) for d in tu.diagnostics if d.severity >= ci.Diagnostic.Error]
    u = Unit()
    u.namespace_names(tu.cursor, '')
    u.walk(tu.cursor, None)
    u.namespace_clashes()
    ent = {json.dumps(k): dict(v, locs=sorted(v['locs']), classes=sorted(v.get('classes', ())))
           for k, v in u.entities.items()}
    return {'file': path, 'errors': errors[:5], 'entities': ent, 'classes': u.classes,
            'clashes': {json.dumps(k): v for k, v in u.clashes.items()},
            'uses': u.uses, 'outer': sorted(u.outer), 'unresolved': sorted(u.unresolved),
            'unflagged': sorted(u.unflagged)}


def compile_args(entry, resource_dir):
    args = entry.get('arguments')
    if args is None:
        import shlex
        args = shlex.split(entry['command'])
    out = []
    skip = False
    for a in args[1:]:
        if skip:
            skip = False
            continue
        if a in ('-o', '-MF', '-MT', '-MQ'):
            skip = True
            continue
        if a in ('-c', '-MD', '-MMD') or a == entry['file']:
            continue
        out.append(a)
    return ['-resource-dir', resource_dir] + out


BY_NAME = [
    re.compile(r'\b(?:SLOT|SIGNAL|METHOD)\s*\(\s*(\w+)'),
    re.compile(r'invokeMethod\s*\([^;]*?"(\w+)"', re.S),
    re.compile(r'\bQ_INVOKABLE\b[^;{(]*?(\w+)\s*\('),
    re.compile(r'\b(?:READ|WRITE|RESET|NOTIFY|BINDABLE)\s+(\w+)'),
]


DEFINE = re.compile(r'^[ \t]*#[ \t]*define[ \t]+\w+(?:\([^)]*\))?((?:[^\n]*\\\n)*[^\n]*)', re.M)
IDENTIFIER = re.compile(r'\b[A-Za-z_]\w*\b')


def names_by_text(root):
    """Names that Qt's meta-object system calls by their text (SLOT() and
    SIGNAL() strings, invokeMethod with a name, Q_INVOKABLE methods, the
    accessors of a Q_PROPERTY), and names in the body of a macro, which
    clang-tidy renames in some translation units and not in others."""
    by_string, in_macro = {}, {}
    for top in ('src', 'tests', 'bench', 'fuzz'):
        for dirpath, _, files in os.walk(os.path.join(root, top)):
            for fn in files:
                if not fn.endswith(('.cpp', '.h', '.hpp', '.cc')):
                    continue
                path = os.path.join(dirpath, fn)
                with open(path, encoding='utf-8', errors='replace') as f:
                    text = f.read()

                def where(m):
                    return '%s:%d' % (os.path.relpath(path, root),
                                      text.count('\n', 0, m.start()) + 1)
                for rx in BY_NAME:
                    for m in rx.finditer(text):
                        by_string.setdefault(m.group(1), where(m))
                for m in DEFINE.finditer(text):
                    for name in IDENTIFIER.findall(m.group(1)):
                        in_macro.setdefault(name, where(m))
    return by_string, in_macro


def load_fixes(path):
    with open(path, encoding='utf-8') as f:
        return yaml.load(f, Loader=getattr(yaml, 'CSafeLoader', yaml.SafeLoader))


MESSAGE = re.compile(r"invalid case style for [\w ]+ '([^']*)'")

# Where clang-tidy's camelBack splits a word of the name wrongly.
PREFERRED = {'SQLiteErrorText': 'sqliteErrorText'}


def prefer(fixes):
    for d in fixes.get('Diagnostics') or []:
        m = d['DiagnosticMessage']
        mm = MESSAGE.match(m['Message'])
        if mm and mm.group(1) in PREFERRED:
            for r in m.get('Replacements') or []:
                r['ReplacementText'] = PREFERRED[mm.group(1)]


def renames_of(fixes):
    renames = {}
    for d in fixes.get('Diagnostics') or []:
        if d.get('DiagnosticName') != 'readability-identifier-naming':
            continue
        m = d['DiagnosticMessage']
        mm = MESSAGE.match(m['Message'])
        if not mm or not m.get('Replacements'):
            continue
        renames[mm.group(1)] = m['Replacements'][0]['ReplacementText']
    return renames


def main():
    _, cmd, root, build, fixes_path, out_path = sys.argv[:6]
    jobs = int(os.environ.get('CAMELCASE_JOBS', '2'))
    root, build = os.path.realpath(root), os.path.realpath(build)
    fixes = load_fixes(fixes_path)
    prefer(fixes)
    renames = renames_of(fixes)
    resource_dir = os.environ['CAMELCASE_RESOURCE_DIR']
    with open(os.path.join(build, 'compile_commands.json')) as f:
        db = json.load(f)
    units = []
    for e in db:
        p = os.path.realpath(os.path.join(e['directory'], e['file']))
        if re.match(re.escape(root) + r'/(src|tests|bench|fuzz)/', p) and \
                not p.startswith(build + '/'):
            if re.search(os.environ.get('CAMELCASE_ONLY', ''), p):
                units.append((p, compile_args(e, resource_dir), e['directory']))
    setup(root, build, renames)
    with multiprocessing.Pool(jobs, initializer=setup, initargs=(root, build, renames)) as pool:
        results = pool.map(parse_unit, units, chunksize=1)

    entities, classes = {}, {}
    clashes = {}
    uses, outer, unresolved, unflagged = [], set(), set(), {}
    for r in results:
        for e in r['errors'][:1]:
            print('camelcase: parse error in %s: %s' % (os.path.relpath(r['file'], root), e),
                  file=sys.stderr)
        for k, v in r['entities'].items():
            cur = entities.setdefault(k, dict(v, locs=set(), classes=set()))
            cur['locs'].update(tuple(x) for x in v['locs'])
            cur['classes'].update(v['classes'])
            cur['slot'] = cur.get('slot') or v.get('slot', False)
            if v['class']:
                cur['classes'].add(v['class'])
        for usr, info in r['classes'].items():
            if usr not in classes or (info['names'] and not classes[usr]['names']):
                classes[usr] = info
        for k, v in r['clashes'].items():
            clashes.setdefault(k, v)
        uses += r['uses']
        outer.update(tuple(x) for x in r['outer'])
        unresolved.update(tuple(x) for x in r['unresolved'])
        for name, where in r['unflagged']:
            unflagged.setdefault(name, where)

    derived = collections.defaultdict(set)
    for usr, info in classes.items():
        for b in info['bases']:
            derived[b].add(usr)

    def bases_of(usr, acc):
        if usr in acc or usr not in classes:
            return acc
        acc.add(usr)
        for b in classes[usr]['bases']:
            bases_of(b, acc)
        return acc

    def below(usr, acc):
        for d in derived.get(usr, ()):
            if d not in acc:
                acc.add(d)
                below(d, acc)
        return acc

    def hierarchy(cls_usrs):
        h = set()
        for c in cls_usrs:
            h |= bases_of(c, set())
            for d in below(c, set()):
                h |= bases_of(d, set())
        return h

    by_string, in_macro = names_by_text(root)
    blocked = {}  # key -> reason
    for k, e in entities.items():
        old, new = e['old'], e['new']
        if e['clinkage']:
            blocked[k] = 'C linkage'
            continue
        if old in by_string:
            blocked[k] = "Qt's meta-object system calls it by name (%s)" % by_string[old]
            continue
        if old in in_macro:
            blocked[k] = 'used in the body of a macro (%s)' % in_macro[old]
            continue
        if e.get('slot'):
            blocked[k] = 'a Qt slot, which can be called by name'
            continue
        if e['method']:
            for c in sorted(hierarchy(e['classes'])):
                info = classes[c]
                clash = [n for n in info['names'] if n != old and RENAMES.get(n, n) == new]
                if clash:
                    blocked[k] = "'%s' is already a member of %s" % (new, info['name'])
                    break
                if (c, new) in outer:
                    blocked[k] = "a method of %s calls another '%s'" % (info['name'], new)
                    break
        elif k in clashes:
            blocked[k] = clashes[k]
    for k, scopes, cls, local_clash, where in uses:
        k = json.dumps(list(k))
        e = entities.get(k)
        if e is None or k in blocked:
            continue
        if local_clash:
            blocked[k] = "'%s' is a local name where it is called (%s)" % (e['new'], where)
        elif cls and not e['method']:
            for c in sorted(bases_of(cls, set())):
                if e['new'] in classes[c]['names']:
                    blocked[k] = "'%s' is a member of %s, where it is called (%s)" % (
                        e['new'], classes[c]['name'], where)
                    break

    # A name used where clang cannot tell what it means (a call in a template
    # on a dependent type) would not be renamed there: keep it as it is.
    for old, where in sorted(unresolved):
        for k, e in entities.items():
            if e['old'] == old and k not in blocked:
                blocked[k] = 'used where it cannot be resolved (%s)' % where

    blocked_locs = set()
    for k in blocked:
        e = entities[k]
        blocked_locs.add(tuple(json.loads(k)))
        blocked_locs.update(tuple(x) for x in e['locs'])

    kept, unfixable = [], {}
    for d in fixes.get('Diagnostics') or []:
        m = d['DiagnosticMessage']
        if (real(m['FilePath']), m['FileOffset']) in blocked_locs:
            continue
        if not m.get('Replacements'):
            if d.get('DiagnosticName') != 'readability-identifier-naming':
                continue
            # clang-tidy's own refusal: the new name is a keyword or a macro.
            unfixable.setdefault(m['Message'], '%s@%d' % (
                os.path.relpath(m['FilePath'], root), m['FileOffset']))
            continue
        kept.append(d)
    out = dict(fixes)
    out['Diagnostics'] = kept
    with open(out_path, 'w', encoding='utf-8') as f:
        yaml.dump(out, f, Dumper=getattr(yaml, 'CSafeDumper', yaml.SafeDumper),
                  allow_unicode=True, width=1 << 20)

    touched = sorted({real(r['FilePath']) for d in kept for r in d['DiagnosticMessage']['Replacements']})
    with open(out_path + '.files', 'w', encoding='utf-8') as f:
        f.write(''.join(t + '\n' for t in touched))

    report = []
    for k, why in sorted(blocked.items(), key=lambda kv: (entities[kv[0]]['old'], kv[0])):
        e = entities[k]
        report.append('%-34s %-34s %s: %s' % (e['old'], e['new'], e['place'], why))
    for msg, where in sorted(unfixable.items()):
        report.append('%s (%s)' % (msg, where))
    for name, where in sorted(unflagged.items()):
        report.append('%-34s not renamed by clang-tidy (%s)' % (name, where))
    with open(out_path + '.kept-names.txt', 'w', encoding='utf-8') as f:
        f.write('\n'.join(report) + ('\n' if report else ''))
    renamed = {MESSAGE.match(d['DiagnosticMessage']['Message']).group(1)
               for d in kept if MESSAGE.match(d['DiagnosticMessage']['Message'])}
    print('camelcase: %d names to rename; kept as they are: %d declarations whose new name '
          'would clash, %d that clang-tidy cannot fix, %d that it leaves alone' % (
              len(renamed), len(blocked), len(unfixable), len(unflagged)))
    for line in report:
        print('  kept: ' + line)


if __name__ == '__main__':
    main()
