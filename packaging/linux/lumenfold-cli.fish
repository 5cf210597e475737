# fish completion for lumenfold-cli
set -l used __fish_seen_subcommand_from
complete -c lumenfold-cli -n "not $used site build versions" -f -a "site build versions"
complete -c lumenfold-cli -n "$used site; and not $used build check plan serve" -f \
    -a "build check plan serve"
complete -c lumenfold-cli -l porcelain -d "Lines for another program"
complete -c lumenfold-cli -l quiet -d "Print only what goes wrong"
complete -c lumenfold-cli -n "$used site" -l pending -d "Build pending versions first"
complete -c lumenfold-cli -n "$used site" -l output -r -d "Folder to make the site in"
complete -c lumenfold-cli -n "$used site" -l strict -d "End with 1 where there are complaints"
complete -c lumenfold-cli -n "$used serve" -l port -x -d "Port to serve on"
complete -c lumenfold-cli -n "$used build; and not $used site" -l version -x -d "One version"
