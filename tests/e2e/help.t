Help goes to standard output and ends the run with status 0; the frame's
errors end it with status 1 and print nothing.

  $ . "$TESTDIR/plain-env.sh"

  $ vektool mon -h
  Usage: vektool mon [options] <command> [args]
     or: vektool mon get-conn-count <type>      # block/category/priority
     or: vektool mon clear-conn-count
  
      -h, --help    show this help message and exit
      --json        
  $ vektool mon get-conn-count block --help > help.out; echo $?
  0
  $ vektool mon -h | cmp - help.out

Help is a boolean that cannot be negated: --no-help is an unknown option and dropped.

  $ vektool mon --no-help
  [1]
  $ vektool mon
  [1]
  $ vektool mon bogus --json
  [1]
  $ vektool mon Get-Conn-Count block
  [1]

Unknown options are dropped wherever they stand; their values stay as words.

  $ printf 'u:block_conns:7\n' > root/proc/vek/monitor
  $ vektool mon -x get-conn-count --foo block -q
  7
  $ vektool mon get-conn-count --mac block
  7

"--" ends the options: what follows are words, even --json.

  $ vektool mon get-conn-count -- flows --json
  Unsupport type: flows
  
  $ vektool mon get-conn-count -- --json
  Unsupport type: --json
  
